# Gives zokecc::zokecc, the shared library, and zokecc::zokecc_static.
include(${CMAKE_CURRENT_LIST_DIR}/zokecc-targets.cmake)

# The objects of the static library were C++, but they need none of its libraries. Without this a
# program in C is linked as C++ where a project knows both.
get_target_property(zokecc_configurations zokecc::zokecc_static IMPORTED_CONFIGURATIONS)
foreach(zokecc_configuration ${zokecc_configurations})
    set_target_properties(zokecc::zokecc_static PROPERTIES
        IMPORTED_LINK_INTERFACE_LANGUAGES_${zokecc_configuration} C)
endforeach()
unset(zokecc_configurations)
unset(zokecc_configuration)
