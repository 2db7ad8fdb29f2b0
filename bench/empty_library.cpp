// A library without code, to load beside libolh. It uses the C++ runtime as any such library does.
#include <string>

extern "C" std::size_t empty_library(const char* text);
std::size_t empty_library(const char* text) { return std::string(text).size(); }
