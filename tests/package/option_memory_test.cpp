// Option files and first use under a budget of memory that holds for the whole process, the INI reader included; and an
// option file that is another one by the time it is loaded.
#include <iniparser.h>
#include <malloc.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <new>
#include <string>

#include "olh/olh.h"
#include "olh/support.h"
#include "option_dictionary.h"
#include "scratch.h"

namespace {

constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();
std::size_t left = kUnlimited;
bool ran_out = false;
long until_one_fails = -1;  // so many allocations succeed, and after the next one all again

bool has(std::size_t size) noexcept {
  const bool is_the_one = until_one_fails >= 0 && until_one_fails-- == 0;
  if (size <= left && !is_the_one) return true;
  ran_out = true;
  errno = ENOMEM;
  return false;
}

void* taken(void* block) noexcept {
  if (left != kUnlimited) left -= std::min(left, malloc_usable_size(block));
  return block;
}

void give_back(void* block) noexcept {
  if (left != kUnlimited) left += malloc_usable_size(block);
}

// In this scope there are so many bytes.
class Budget {
 public:
  explicit Budget(std::size_t bytes) noexcept {
    ran_out = false;
    left = bytes;
  }
  ~Budget() { left = kUnlimited; }
  Budget(const Budget&) = delete;
  Budget& operator=(const Budget&) = delete;
};

std::string put_in_the_place_of;

}  // namespace

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);
dictionary* __real_iniparser_load(const char* name);

void* malloc(std::size_t size) noexcept { return has(size) ? taken(__libc_malloc(size)) : nullptr; }
void* calloc(std::size_t count, std::size_t size) noexcept {
  return has(count * size) ? taken(__libc_calloc(count, size)) : nullptr;
}
void* realloc(void* block, std::size_t size) noexcept {
  if (!has(size)) return nullptr;
  give_back(block);
  return taken(__libc_realloc(block, size));
}
void free(void* block) noexcept {
  give_back(block);
  __libc_free(block);
}

// A neighbour is quicker than the INI reader.
dictionary* __wrap_iniparser_load(const char* name) {
  if (!put_in_the_place_of.empty()) {
    unlink(put_in_the_place_of.c_str());
    mkfifo(put_in_the_place_of.c_str(), 0600);
  }
  return __real_iniparser_load(name);
}
}

namespace {

class OptionMemory : public olh_test::Scratch {};

TEST_F(OptionMemory, AFifoPutInThePlaceOfACheckedFileIsNotOpened) {
  const std::string file = write("o.ini", "QEL_PDF_READER=\"/r\"\n");
  put_in_the_place_of = file;
  alarm(10);
  const olh::OptionDictionary options(file.c_str());
  alarm(0);
  put_in_the_place_of.clear();
  EXPECT_STREQ(options.value_of(olh::kPdfReaderKey), "/r");
}

TEST_F(OptionMemory, AFileIsLoadedWholeOrMemoryIsExhausted) {
  std::string text = "QEL_PDF_READER=\"/r\"\n";
  for (int i = 0; i < 300; ++i) text += "KEY" + std::to_string(i) + "=\"" + std::string(80, 'v') + "\"\n";
  const std::string file = write("o.ini", text + "QEL_HTML_BROWSER=\"/b\"\n");
  bool enough = false;
  for (std::size_t bytes = 0; !enough; bytes += 509) {
    bool loaded = false;
    try {
      const Budget budget(bytes);
      const olh::OptionDictionary options(file.c_str());
      loaded = options.value_of(olh::kPdfReaderKey) != nullptr && options.value_of(olh::kHtmlBrowserKey) != nullptr;
      enough = !ran_out;
    } catch (const std::bad_alloc&) {
      continue;
    }
    ASSERT_TRUE(loaded) << bytes;
  }
}

TEST_F(OptionMemory, RootsThatThereWasNoMemoryForAreGatheredLater) {
  const std::string root = make_root("root");
  set("QEL_DOC_PATH", root);
  std::size_t bytes = 0;
  const char* first = nullptr;
  for (; first == nullptr && bytes < 1024 * 1024; bytes += 997) {
    const Budget budget(bytes);
    first = GetOlhDocPath();
  }
  EXPECT_STREQ(first, root.c_str());
  EXPECT_GT(bytes, 997U) << "memory never ran out";
}

TEST_F(OptionMemory, AProgramThatThisProcessDidNotTakeIsNotSaidToBeSet) {
  const std::string programs[] = {make_program("a"), make_program("b")};
  for (const OlhViewer viewer : {OLH_VIEWER_PDF, OLH_VIEWER_HTML}) {
    OlhSetViewerPath(viewer, programs[1].c_str());
    bool failed = true;
    int refused = 0;
    for (long turn = 0; failed; ++turn) {
      const std::string& program = programs[turn % 2];
      ran_out = false;
      until_one_fails = turn;
      const int result = OlhSetViewerPath(viewer, program.c_str());
      until_one_fails = -1;
      failed = ran_out;
      char now[OLH_BUFFER_SIZE] = "";
      OlhGetViewerPath(viewer, now);
      if (now != program) ++refused;
      EXPECT_TRUE(result == 5 || now == program) << turn << ": " << result << " " << now;
    }
    EXPECT_GT(refused, 0) << viewer;
  }
}

}  // namespace
