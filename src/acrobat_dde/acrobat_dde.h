// The PDF reader launcher: the one object that chooses the reader and starts it.
//
// Knows    the reader's command lines and the order of the steps; a file of this room for each concern.
// Not      where the document comes from (olh_doclist), nor what an option file looks like.
// Owns     the record of the two known programs, and the buffer of the search.
// For      this room. Everybody else comes through the functions of olh/support.h (acrobat_dde.cpp).
#ifndef OLH_ACROBAT_DDE_ACROBAT_DDE_H
#define OLH_ACROBAT_DDE_ACROBAT_DDE_H

#include <cstdlib>
#include <memory>

#include "viewer_choice.h"

class OlhAcroDDE {
 public:
  constexpr OlhAcroDDE() noexcept = default;
  OlhAcroDDE(const OlhAcroDDE&) = delete;
  OlhAcroDDE& operator=(const OlhAcroDDE&) = delete;

  // choice: the programs known and found
  void setViewerDefaults(const char* path);
  int locateViewer();
  int getViewerPath(char* dst, const char* viewer_path);
  int setViewerPath(const char* path);

  // start
  int isViewerRunning();
  int startViewer(const char* unused, const char* doc, const char* newlink, const char* viewer_path);

  struct FreeBuffer {
    void operator()(char* buffer) const noexcept { std::free(buffer); }
  };

  // Both null until the first setViewerDefaults.
  olh::ViewerPaths d_viewerPaths;
  std::unique_ptr<char, FreeBuffer> d_acroViewerExePath;  // OLH_BUFFER_SIZE bytes: what locateViewer found
};

// The instance, and the pointer to it once OlhAcroInitViewer has run.
extern OlhAcroDDE olhAcroDDENew;
extern OlhAcroDDE* olhAcroDDE;

// Makes the first choice of programs, unless that has happened.
void OlhAcroInitViewer();

#endif
