# Compiles neighbouring sources as if they were one, so that the headers they share are read once: a build from nothing
# takes about half the time, a later one after a small change more. Names that two sources of a group define for
# themselves must then differ.
option(QUILMORA_UNITY "Compile the sources in groups" "$ENV{QUILMORA_UNITY}")
if(QUILMORA_UNITY)
  set(CMAKE_UNITY_BUILD ON)
  set(CMAKE_UNITY_BUILD_BATCH_SIZE 8)
  # g++ takes the sources of a group for headers, in which a test on a fixture without a linkage would be a mistake, and
  # a parameter with the name of a function from another source.
  add_compile_options(-Wno-subobject-linkage -Wno-shadow)
endif()

# Sources that cannot share a group.
function(quilmora_compile_alone)
  set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
