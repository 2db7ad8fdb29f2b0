// The version of the interface.
#include "olh/support.h"
#include "one_thread.h"
#include "trace_log.h"

// A call line without a result line: there is no code to report.
const char* OlhVersion() noexcept {
  const olh::OneThread inside;
  static constexpr char kVersion[] = "v4.3_2.1";
  OlhDocListInit();
  print_debug("OlhVersion: %s\n", kVersion);
  OlhLogHelp("OlhVersion", kVersion, nullptr, nullptr);
  return kVersion;
}
