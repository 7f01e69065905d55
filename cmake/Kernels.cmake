# How the sources are optimised, and which of them there are.
#
# Most of the code runs once per call and a handful of files do nearly all the work. On ARM the
# former is built for size, in Thumb instructions; the latter in ARM instructions, which have the
# long multiplication. GCC's first scheduling pass only costs spills there.
option(ZOKECC_THUMB "On ARM, build what is not hot for size, in Thumb instructions" ON)
option(ZOKECC_SMALL "Leave out the fast paths for points: a third less code, a fifth of the speed" OFF)

set(zokecc_hot
    mint/fast_divide.cpp mint/fast_inverse.cpp mint/short_limbs_unrolled.cpp
    hash/sha256.cpp hash/sm3.cpp ecc/fast_field.cpp)
set(zokecc_arm_instructions ${zokecc_hot} mint/short_limbs.cpp)

if(ZOKECC_SMALL)
    target_compile_definitions(zokecc_objects PUBLIC ZOKECC_SMALL)
endif()

if(CMAKE_SYSTEM_PROCESSOR MATCHES "^arm")
    set(optimised $<NOT:$<CONFIG:Debug>>)
    get_target_property(zokecc_sources zokecc_objects SOURCES)
    foreach(source ${zokecc_sources})
        set(options)
        if(source IN_LIST zokecc_arm_instructions)
            list(APPEND options -marm)
        elseif(ZOKECC_THUMB)
            list(APPEND options -mthumb)
        endif()
        if(NOT source IN_LIST zokecc_hot)
            list(APPEND options $<${optimised}:-Os>)
        elseif(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            list(APPEND options -fno-schedule-insns)
        endif()
        set_property(SOURCE ${source} APPEND PROPERTY COMPILE_OPTIONS ${options})
    endforeach()
    if(ZOKECC_THUMB)
        # Calls change between the two kinds of instructions by themselves, from ARMv5T on.
        set(zokecc_link_options -Wl,--use-blx)
    endif()
endif()
