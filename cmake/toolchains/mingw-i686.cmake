# 32-bit Windows with mingw-w64, the architecture the hosts load.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(NV_MINGW_TRIPLET i686-w64-mingw32)
# Every x86 Windows that runs the hosts has SSE2, so the engine scans with it as on x86-64.
# Windows promises a caller's stack only 4-byte alignment: functions that keep SSE values
# on the stack realign it themselves.
set(CMAKE_C_FLAGS_INIT "-msse2 -mstackrealign")
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mstackrealign")
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
