// The portals of a root that show registered documents: one for each section.
//
// Knows    how the name of a section becomes that of a portal, and the two files of one; a mark in its list tells which
//          portals are from here, and only these are replaced and removed; lines of the list of portals likewise.
// Not      which of the portals that are listed are there (the list generator).
// For      import_doc_base.
#ifndef OLH_IMPORT_SECTION_PORTALS_H
#define OLH_IMPORT_SECTION_PORTALS_H

#include <map>
#include <string>
#include <vector>

namespace olh_import {

class SectionPortals {
 public:
  // A document of a section.
  void add(const std::string& section, const std::string& title, const std::string& document);

  // Puts them into the root and its list of portals, in alphabetical order, and takes away those of sections that are
  // gone. A name that is taken is a sentence of `problems`.
  void write(const std::string& root, std::vector<std::string>& problems) const;

  std::size_t size() const { return portals_.size(); }

 private:
  struct Document {
    std::string title;
    std::string name;
  };
  struct Portal {
    std::string name;
    std::string title;
    std::vector<Document> documents;
  };

  static std::string documents_of(const Portal& portal);
  void list_portals(const std::string& folder) const;

  std::map<std::string, Portal> portals_;  // in the order of their sections
};

}  // namespace olh_import

#endif
