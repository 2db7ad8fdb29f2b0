// The documentation root that comes with this program: its own manual.
//
// For      doctor.
#ifndef OLH_TOOLS_SAMPLE_H
#define OLH_TOOLS_SAMPLE_H

#include <string>

namespace olh {

// Where it is installed, or was built; "" when it is not there.
std::string sample_root();

}  // namespace olh

#endif
