# Sanitizers and coverage, applied to the library and to everything linked with it.
function(zokecc_instrument target)
    if(ZOKECC_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${ZOKECC_SANITIZE} -fno-sanitize-recover=all
                               -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=${ZOKECC_SANITIZE})
    endif()
    if(ZOKECC_COVERAGE)
        target_compile_options(${target} PRIVATE --coverage)
        target_link_options(${target} PRIVATE --coverage)
    endif()
endfunction()
