# The warnings that every target of the project compiles without.
add_library(olh_warnings INTERFACE)
target_compile_options(olh_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
