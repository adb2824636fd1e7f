set(MORLAINE_SANITIZERS "" CACHE STRING "Sanitizers to build with, separated by commas")

if(MORLAINE_SANITIZERS)
    add_compile_options("-fsanitize=${MORLAINE_SANITIZERS}" -fno-sanitize-recover=all)
    add_link_options("-fsanitize=${MORLAINE_SANITIZERS}")
endif()
