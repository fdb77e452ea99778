include("${CMAKE_CURRENT_LIST_DIR}/zxqtlvTargets.cmake")
