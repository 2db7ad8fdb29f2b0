// The flag that tells pages outside the libraries that there is a library.
//
// For      the driver, as its last step.
#include <cstdio>
#include <string>
#include <string_view>

#include "generated_file.h"
#include "olh/dmerge.h"
#include "paths.h"
#include "step.h"

namespace {

constexpr char kText[] =
    "WWHFrame = eval(\"window.self\");\n"
    "LibraryAvailable = \"true\";\n"
    "\n";

}  // namespace

int writeLibAvail(const char* root) noexcept {
  return olh::run_step(DMERGE_RESULT_UNWRITABLE, root, [](std::string_view directory) {
    const std::string path = olh::clean_path({directory, "/htmldocs/QEL/lib/LibraryAvailable.js"});
    if (olh::put_list(path, kText)) return DMERGE_RESULT_OK;
    std::printf("ERROR: writeLibAvail: unable to write to %s\n", path.c_str());
    return DMERGE_RESULT_UNWRITABLE;
  });
}
