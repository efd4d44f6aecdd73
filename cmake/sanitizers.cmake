# Sanitizers hold for everything that is built: the library, the tools and the tests share one
# run-time. The standard library looks at its own bounds there, within objects too.
if(VDRZAX_SANITIZE)
  add_compile_options(-fsanitize=${VDRZAX_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_link_options(-fsanitize=${VDRZAX_SANITIZE})
endif()
