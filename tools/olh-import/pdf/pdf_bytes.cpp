#include "pdf_bytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include "bounds.h"
#include "refusal.h"
#include "words.h"

namespace olh_import {

namespace {

constexpr std::string_view kFirstBytes = "%PDF-";
constexpr std::size_t kSearchedForFirstBytes = 1024;
constexpr std::size_t kBlock = std::size_t{64} * 1024;

// A regular file that is not too large, opened without waiting; else none.
std::FILE* opened(const std::string& file) {
  const int fd = open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  struct stat status = {};
  std::FILE* stream = nullptr;
  if (fd < 0) return stream;
  if (fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && static_cast<std::size_t>(status.st_size) <= kLargestPdf)
    stream = fdopen(fd, "rb");
  if (stream == nullptr) close(fd);
  return stream;
}

}  // namespace

bool is_compressed(std::string_view name) { return olh_viewers::lower_case(name).ends_with(".gz"); }

bool is_pdf_name(std::string_view name) {
  const std::string lower = olh_viewers::lower_case(name);
  return lower.ends_with(".pdf") || lower.ends_with(".pdf.gz");
}

PdfBytes::PdfBytes(const std::string& file) : file_(file), stream_(opened(file), std::fclose) {
  if (stream_ && is_compressed(file)) unpack();
  if (!stream_) throw Refusal(kNoSource, file + " cannot be read, or is too large.");
}

// Without a stream where it fails. What is named like a compressed file, and is none, is taken as it is.
void PdfBytes::unpack() {
  const std::unique_ptr<gzFile_s, int (*)(gzFile)> packed(gzopen(file_.c_str(), "rb"), gzclose);
  stream_.reset(std::tmpfile());
  if (!packed || !stream_) return stream_.reset();
  char block[kBlock];
  std::size_t size = 0;
  int count = 0;
  while (size <= kLargestPdf && (count = gzread(packed.get(), block, sizeof block)) > 0)
    size += std::fwrite(block, 1, static_cast<std::size_t>(count), stream());
  if (count != 0 || std::fflush(stream()) != 0 || std::ferror(stream()) != 0) stream_.reset();
}

bool PdfBytes::is_pdf() const {
  char beginning[kSearchedForFirstBytes + kFirstBytes.size()];
  std::rewind(stream());
  const std::size_t size = std::fread(beginning, 1, sizeof beginning, stream());
  return std::string_view(beginning, size).find(kFirstBytes) != std::string_view::npos;
}

void PdfBytes::copy(std::FILE* to) const {
  char block[kBlock];
  std::rewind(stream());
  while (const std::size_t size = std::fread(block, 1, sizeof block, stream()))
    if (std::fwrite(block, 1, size, to) != size) return;  // who has opened `to` looks after that
  if (std::ferror(stream()) != 0) throw Refusal(kNoSource, file_ + " cannot be read.");
}

}  // namespace olh_import
