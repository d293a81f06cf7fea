# Warnings are errors in our own code; sanitizers come from QUILMORA_SANITIZE.
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Werror)
# g++'s standard library sorts with a function that clang warns about.
add_compile_options($<$<CXX_COMPILER_ID:Clang>:-Wno-deprecated-declarations>)
add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_FOREACH QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(QUILMORA_SANITIZE)
  add_compile_options(-fsanitize=${QUILMORA_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${QUILMORA_SANITIZE})
  # GCC's flow analysis reports false uninitialised uses inside instrumented standard headers.
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()
