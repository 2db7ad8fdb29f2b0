// The flag that tells pages outside the libraries that there is a library.
//
// For      the driver, as its last step.
#include <cstdio>
#include <string>

#include "boundary.h"
#include "bounded_text.h"
#include "generated_file.h"
#include "olh/dmerge.h"
#include "paths.h"

namespace {

constexpr char kText[] =
    "WWHFrame = eval(\"window.self\");\n"
    "LibraryAvailable = \"true\";\n"
    "\n";

}  // namespace

int writeLibAvail(const char* root) noexcept {
  return olh::guarded(int{DMERGE_RESULT_UNWRITABLE}, [root] {
    const std::string path = olh::clean_path({olh::text_of(root), "/htmldocs/QEL/lib/LibraryAvailable.js"});
    if (olh::put_list(path, kText)) return int{DMERGE_RESULT_OK};
    std::printf("ERROR: writeLibAvail: unable to write to %s\n", path.c_str());
    return int{DMERGE_RESULT_UNWRITABLE};
  });
}
