# morlaine_conventions: compiler settings of all targets.
add_library(morlaine_conventions INTERFACE)

target_compile_features(morlaine_conventions INTERFACE cxx_std_20)
set(CMAKE_CXX_EXTENSIONS OFF)

target_compile_options(morlaine_conventions INTERFACE
    -fsized-deallocation
    -Wall
    -Wextra
    -Wpedantic
    -Wconversion
    -Wshadow
    # A newer Qt that deprecates a function must not break a build that treats warnings as errors.
    -Wno-error=deprecated-declarations
)

target_compile_definitions(morlaine_conventions INTERFACE
    QT_DISABLE_DEPRECATED_BEFORE=0x060400
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_FOREACH
    QT_NO_KEYWORDS
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_NO_URL_CAST_FROM_STRING
)
