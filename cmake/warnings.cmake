# The warnings that every target of the project compiles without.
add_library(olh_warnings INTERFACE)
target_compile_options(olh_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
# At -O3, g++ 12 warns of the strings of its own library.
target_compile_options(
  olh_warnings INTERFACE "$<$<AND:$<COMPILE_LANG_AND_ID:CXX,GNU>,$<CONFIG:Release>>:-Wno-restrict;-Wno-maybe-uninitialized>")
