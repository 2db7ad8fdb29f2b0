#include "inflated.h"

#include <zlib.h>

#include <algorithm>
#include <limits>

namespace olh_import {

std::optional<Inflated> inflated(std::string_view packed, std::size_t most) {
  z_stream stream = {};
  if (inflateInit(&stream) != Z_OK) return std::nullopt;
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
  stream.avail_in = static_cast<uInt>(std::min<std::size_t>(packed.size(), std::numeric_limits<uInt>::max()));
  std::string text;
  char block[65536];
  int state = Z_OK;
  while (state == Z_OK && text.size() <= most) {
    stream.next_out = reinterpret_cast<Bytef*>(block);
    stream.avail_out = sizeof block;
    state = inflate(&stream, Z_NO_FLUSH);
    text.append(block, sizeof block - stream.avail_out);
  }
  inflateEnd(&stream);
  return text.size() > most ? std::nullopt : std::optional(Inflated{std::move(text), state == Z_STREAM_END});
}

}  // namespace olh_import
