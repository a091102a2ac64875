# Builds Windows programs on Linux with Qt linked statically. The environment variables
# TAMBER_QT_WINDOWS and TAMBER_OSCPACK_WINDOWS must contain the folders that packaging/windows/qt and
# packaging/windows/oscpack print.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triplet x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)

set(CMAKE_FIND_ROOT_PATH "$ENV{TAMBER_QT_WINDOWS}" "$ENV{TAMBER_OSCPACK_WINDOWS}" /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# A program is a single file that needs no other libraries, and opens no console.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -s")
set(CMAKE_WIN32_EXECUTABLE ON)
