# Shared by the mingw-w64 toolchains: NV_MINGW_TRIPLET names the target before inclusion.
set(CMAKE_SYSTEM_NAME Windows)

# The -posix thread model: the -win32 one has no std::mutex, which GoogleTest needs.
set(CMAKE_C_COMPILER ${NV_MINGW_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${NV_MINGW_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${NV_MINGW_TRIPLET}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${NV_MINGW_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Executables carry their C++ runtime: Wine then looks for no libstdc++ or winpthread DLL.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
# A DLL loaded into someone else's process must not depend on those DLLs either.
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")

# CTest runs every test program through Wine.
find_program(NV_WINE wine)
if(NV_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${NV_WINE})
endif()
