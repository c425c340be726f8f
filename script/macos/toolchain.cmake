# Builds for macOS on Linux, with what fetch-packages and link_stubs.py have put into build/macos.
# VELMO_MACOS_ARCHITECTURE is aarch64 or x86_64.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VELMO_MACOS_ARCHITECTURE)
# What a library can be made of is known; programs are linked by those who have the frameworks' symbols.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR ${VELMO_MACOS_ARCHITECTURE})
set(CMAKE_OSX_SYSROOT "" CACHE STRING "")
set(CMAKE_OSX_DEPLOYMENT_TARGET "" CACHE STRING "")
set(CMAKE_CXX_COMPILER ${CMAKE_CURRENT_LIST_DIR}/zig-c++)
set(CMAKE_CXX_COMPILER_TARGET ${VELMO_MACOS_ARCHITECTURE}-macos.14.0)
cmake_path(SET stubs NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../../build/macos/stubs)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-F${stubs} -L${stubs}/lib")
set(CMAKE_AR llvm-ar CACHE STRING "")
set(CMAKE_RANLIB llvm-ranlib CACHE STRING "")
set(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool CACHE STRING "")
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
