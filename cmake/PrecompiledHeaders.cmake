# The standard and Qt headers that most sources include, compiled once per target, which halves the build time. The
# list is deliberately short: a large precompiled header takes longer to load than it saves. Sources still include
# what they use; QUILMORA_PRECOMPILED_HEADERS=OFF shows where one does not.
option(QUILMORA_PRECOMPILED_HEADERS "Compile the most used headers once" ON)

function(quilmora_precompile_headers target)
  if(QUILMORA_PRECOMPILED_HEADERS)
    target_precompile_headers(${target} PRIVATE <algorithm> <array> <cmath> <functional> <map> <memory> <optional> <span>
                              <string> <unordered_map> <vector> <QByteArray> <QHash> <QObject> <QPainter> <QString>
                              <QStringList> ${ARGN})
    # Lets ccache see the contents of a precompiled header.
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
  endif()
endfunction()

# Lets a target use the precompiled headers of another one with the same options.
function(quilmora_reuse_precompiled_headers target owner)
  if(QUILMORA_PRECOMPILED_HEADERS)
    target_precompile_headers(${target} REUSE_FROM ${owner})
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
  endif()
endfunction()
