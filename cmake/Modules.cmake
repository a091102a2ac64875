# Functions that make a library of a module (a top-level folder) and a program of a unit test.

option(TAMBER_WERROR "Treat warnings as errors" OFF)

# Flags of every target: the C++ standard, the warnings and Qt's checks.
add_library(tamber_flags INTERFACE)
target_compile_features(tamber_flags INTERFACE cxx_std_17)
target_compile_options(tamber_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wold-style-cast -Woverloaded-virtual
    # Qt's logging macros are called without arguments after the category.
    $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>
    $<$<BOOL:${TAMBER_WERROR}>:-Werror>)
target_compile_definitions(tamber_flags INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_DISABLE_DEPRECATED_BEFORE=0x050F00
    $<$<BOOL:${TAMBER_ASSERTS}>:QT_FORCE_ASSERTS>)

# Gives a target the include path of a module: a folder that contains only a link to the module. So
# "device/vxmsg.h" is found only by targets that link the module, and any other include of it does
# not compile.
function(tamber_module_includes target scope module)
    set(view "${PROJECT_BINARY_DIR}/modules/${module}")
    file(MAKE_DIRECTORY "${view}")
    file(CREATE_LINK "${PROJECT_SOURCE_DIR}/${module}" "${view}/${module}" SYMBOLIC)
    target_include_directories(${target} ${scope} "${view}")
endfunction()

# tamber_module(<module> SOURCES <files...> LINKS <targets...>)
# makes the library tamber_<module> from the folder <module>.
function(tamber_module module)
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    add_library(tamber_${module} STATIC ${arg_SOURCES})
    tamber_module_includes(tamber_${module} PUBLIC ${module})
    target_link_libraries(tamber_${module} PUBLIC tamber_flags ${arg_LINKS})
endfunction()

# tamber_test(<name> [DISPLAY] [MANAGER] [BUS] [SCREEN <WIDTHxHEIGHT>] [TIMEOUT <seconds>]
#             SOURCES <files...> LINKS <targets...>)
# makes a QtTest program and adds it to ctest. DISPLAY: it opens windows, so it runs on a virtual
# display that no other test uses, of 1366x768 unless SCREEN is given. MANAGER: a window manager
# runs on that display. BUS: it runs on a D-Bus session that no other test uses.
function(tamber_test name)
    cmake_parse_arguments(arg "DISPLAY;MANAGER;BUS;NETWORK" "SCREEN;TIMEOUT" "SOURCES;LINKS" ${ARGN})
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 300) # seconds; the thread sanitizer takes up to fifteen times as long
    endif()
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE tamber_flags tamber_testing Qt5::Test ${arg_LINKS})
    set(launcher "${PROJECT_SOURCE_DIR}/tests/in-private-home")
    if(arg_NETWORK)
        list(APPEND launcher "${PROJECT_SOURCE_DIR}/tests/in-private-network")
    endif()
    if(arg_DISPLAY)
        list(APPEND launcher "${PROJECT_SOURCE_DIR}/tests/on-private-display")
    endif()
    if(arg_MANAGER)
        list(APPEND launcher "${PROJECT_SOURCE_DIR}/tests/with-window-manager")
    endif()
    if(arg_BUS)
        list(APPEND launcher "${PROJECT_SOURCE_DIR}/tests/on-private-bus")
    endif()
    add_test(NAME ${name} COMMAND ${launcher} $<TARGET_FILE:${name}>)
    set_tests_properties(${name} PROPERTIES TIMEOUT ${arg_TIMEOUT} SKIP_RETURN_CODE 77)
    if(arg_SCREEN)
        set_tests_properties(${name} PROPERTIES ENVIRONMENT "TEST_SCREEN=${arg_SCREEN}")
    endif()
endfunction()
