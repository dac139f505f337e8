add_library(project_options INTERFACE)
target_compile_options(project_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
if(BAYES_SANITIZE)
  # The sanitizers' own code makes the compiler see uninitialised members in the standard library's <regex>.
  target_compile_options(project_options INTERFACE -Wno-maybe-uninitialized)
  target_compile_options(project_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                   -fno-omit-frame-pointer)
  target_link_options(project_options INTERFACE -fsanitize=address,undefined)
endif()
