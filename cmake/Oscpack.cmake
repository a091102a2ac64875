# oscpack (Debian: liboscpack-dev), which has no CMake package of its own.

find_path(OSCPACK_INCLUDE_DIR oscpack/osc/OscReceivedElements.h REQUIRED)
find_library(OSCPACK_LIBRARY oscpack REQUIRED)
add_library(oscpack INTERFACE IMPORTED)
target_include_directories(oscpack INTERFACE "${OSCPACK_INCLUDE_DIR}")
target_link_libraries(oscpack INTERFACE "${OSCPACK_LIBRARY}")
