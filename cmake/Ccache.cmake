find_program(QUILMORA_CCACHE ccache)
if(QUILMORA_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # Without this, ccache does not cache sources that use precompiled headers.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${QUILMORA_CCACHE})
endif()
