// Pages that mention everything and answer little: what is new, licences, indexes.
//
// Knows    how their titles begin and end, in English.
// For      index_maker.
#ifndef OLH_TOOLS_INDEX_ASIDES_H
#define OLH_TOOLS_INDEX_ASIDES_H

#include <string_view>

namespace olh_index {

bool is_aside(std::string_view title);

}  // namespace olh_index

#endif
