set(MORLAINE_SANITIZERS "" CACHE STRING "Sanitizers to build with, separated by commas")

if(MORLAINE_SANITIZERS)
    add_compile_options("-fsanitize=${MORLAINE_SANITIZERS}" -fno-sanitize-recover=all)
    add_link_options("-fsanitize=${MORLAINE_SANITIZERS}")
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        # RapidJSON adds to the null pointer of an empty stack, for a comparison only.
        add_compile_options(-fno-sanitize=pointer-overflow)
    endif()
endif()
