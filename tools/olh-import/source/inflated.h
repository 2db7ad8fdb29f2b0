// What zlib has packed, unpacked within bounds.
//
// For      the readers.
#ifndef OLH_IMPORT_INFLATED_H
#define OLH_IMPORT_INFLATED_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace olh_import {

struct Inflated {
  std::string text;
  bool is_whole = false;
};
// What a zlib stream holds, as far as it makes sense; nothing when it is more than `most`.
std::optional<Inflated> inflated(std::string_view packed, std::size_t most);

}  // namespace olh_import

#endif
