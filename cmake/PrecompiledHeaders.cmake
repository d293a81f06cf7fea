# The headers of the library and of Qt that most sources read, compiled once for each target: it halves the time of a
# build. Few on purpose: a large file of them costs more to load than it spares. Sources include what they use all the same; QUILMORA_PRECOMPILED_HEADERS=OFF shows where one does not.
option(QUILMORA_PRECOMPILED_HEADERS "Compile the most used headers once" ON)

function(quilmora_precompile_headers target)
  if(QUILMORA_PRECOMPILED_HEADERS)
    target_precompile_headers(${target} PRIVATE <algorithm> <array> <cmath> <functional> <map> <memory> <optional> <span>
                              <string> <unordered_map> <vector> <QByteArray> <QHash> <QObject> <QPainter> <QString>
                              <QStringList> ${ARGN})
    # Lets ccache see what a precompiled header stands for.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
  endif()
endfunction()

# Lets a target use those of another one that is compiled with the same options.
function(quilmora_reuse_precompiled_headers target owner)
  if(QUILMORA_PRECOMPILED_HEADERS)
    target_precompile_headers(${target} REUSE_FROM ${owner})
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
  endif()
endfunction()
