// A PDF of any bytes: the search in blocks finds what the rule finds piece by piece.
#include <sys/mman.h>

#include <algorithm>

#include "fuzz.h"
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
std::string grown(const std::string& input) {
  const auto number_at = [&input](std::size_t i) { return static_cast<unsigned char>(input[i]); };
  std::string bytes;
  for (std::size_t i = 0; i < input.size(); ++i) {
    if (input[i] == 1 && i + 2 < input.size() && bytes.size() < 1U << 20U) {
      bytes.append(number_at(i + 1) * 1021U + number_at(i + 2), 'x');
      i += 2;
    } else {
      bytes += input[i];
    }
  }
  return bytes;
}

}  // namespace

void try_input(const std::string& input) {
  const std::string bytes = grown(input);
  olh::UniqueFd file(memfd_create("pdf", MFD_CLOEXEC));
  expect(write(file.get(), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()), "the bytes are there");
  lseek(file.get(), 0, SEEK_SET);
  static olh::PieceBlocks blocks;
  blocks.start({std::move(file), bytes.size()});
  expect(olh::pdf_title(blocks) == plain_title(bytes), "the title of the slow rule");
}
