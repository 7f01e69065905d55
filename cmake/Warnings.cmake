# Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
# The warnings every target of this project is built with.
function(zokecc_warnings target)
    set(common -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wundef -Wcast-align)
    target_compile_options(${target} PRIVATE ${common} $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>)
    if(ZOKECC_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
