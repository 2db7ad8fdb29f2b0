// Reads the search texts of manuals and parses each row, and no more: the floor of making a search index.
//
//   bench_text_reads FILE...    QELdata/QELSearchText.js of each manual
#include <algorithm>
#include <cstdio>
#include <exception>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace {

std::string text_of(const char* path) {
  std::ifstream file(path, std::ios::binary | std::ios::ate);
  std::string text(static_cast<std::size_t>(file.tellg()), '\0');
  file.seekg(0);
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  return text;
}

// How many bytes of text the rows hold.
std::size_t bytes_of_rows(std::string_view script) {
  constexpr std::string_view kCall = "QELAddText(";
  std::size_t bytes = 0;
  while (!script.empty()) {
    const std::string_view line = script.substr(0, script.find('\n'));
    script.remove_prefix(std::min(line.size() + 1, script.size()));
    if (!line.starts_with(kCall)) continue;
    const auto row = nlohmann::json::parse(line.substr(kCall.size(), line.rfind(']') + 1 - kCall.size()));
    for (const nlohmann::json& text : row) bytes += text.get_ref<const std::string&>().size();
  }
  return bytes;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    std::size_t bytes = 0;
    for (int at = 1; at < argc; ++at) bytes += bytes_of_rows(text_of(argv[at]));
    std::printf("%zu\n", bytes);
    return bytes > 0 ? 0 : 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "bench_text_reads: %s\n", error.what());
    return 1;
  }
}
