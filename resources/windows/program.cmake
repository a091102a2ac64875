# tamber_windows_program(<program> <description>)
# adds the icon, the version from common/constants.h and the manifest to a program.
function(tamber_windows_program program description)
    file(STRINGS "${PROJECT_SOURCE_DIR}/common/constants.h" line REGEX "char softwareVersion\\[\\]")
    if(NOT line MATCHES "\"([0-9]+)\\.([0-9]+) ([0-9]+)\"")
        message(FATAL_ERROR "No version in common/constants.h")
    endif()
    set(version "${CMAKE_MATCH_1}.${CMAKE_MATCH_2} ${CMAKE_MATCH_3}")
    set(numbers "${CMAKE_MATCH_1},${CMAKE_MATCH_2},${CMAKE_MATCH_3},0")
    # A number with a leading 0 would be octal.
    string(REGEX REPLACE "(^|,)0+([0-9])" "\\1\\2" numbers "${numbers}")
    file(STRINGS "${PROJECT_SOURCE_DIR}/LICENSE" copyright REGEX "^Copyright")
    configure_file("${PROJECT_SOURCE_DIR}/resources/windows/program.rc.in" ${program}.rc @ONLY)
    target_sources(${program} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}/${program}.rc")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
        "${PROJECT_SOURCE_DIR}/common/constants.h" "${PROJECT_SOURCE_DIR}/LICENSE")
    set_property(SOURCE "${CMAKE_CURRENT_BINARY_DIR}/${program}.rc" PROPERTY OBJECT_DEPENDS
        "${PROJECT_SOURCE_DIR}/resources/icons/tamber.ico"
        "${PROJECT_SOURCE_DIR}/resources/windows/program.manifest")
endfunction()
