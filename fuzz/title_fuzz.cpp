// A PDF of any bytes: the search in blocks finds what the rule finds piece by piece.
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "expect.h"
#include "piece_blocks.h"
#include "script_line.h"
#include "title_scan.h"

namespace {

std::string plain_title(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t line = std::min(bytes.find('\n'), bytes.size() - 1) + 1;
    const std::string_view piece = bytes.substr(0, std::min(line, olh::kLongestLine));
    const std::string_view title = olh::title_in_piece(piece);
    if (!title.empty()) return std::string(title);
    bytes.remove_prefix(piece.size());
  }
  return "";
}

// The input with runs of one byte in it, so that a short input reaches the ends of pieces and blocks: 0x01 N M stands for
// N * 1,021 + M times "x".
std::string grown(const std::uint8_t* data, std::size_t size) {
  std::string bytes;
  for (std::size_t i = 0; i < size; ++i) {
    if (data[i] == 1 && i + 2 < size && bytes.size() < 1U << 20U) {
      bytes.append(data[i + 1] * 1021U + data[i + 2], 'x');
      i += 2;
    } else {
      bytes += static_cast<char>(data[i]);
    }
  }
  return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes = grown(data, size);
  olh::UniqueFd file(memfd_create("pdf", MFD_CLOEXEC));
  expect(write(file.get(), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()), "the bytes are there");
  lseek(file.get(), 0, SEEK_SET);
  static olh::PieceBlocks blocks;
  blocks.start({std::move(file), bytes.size()});
  expect(olh::pdf_title(blocks) == plain_title(bytes), "the title of the slow rule");
  return 0;
}
