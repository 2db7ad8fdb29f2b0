// Objects that a PDF has packed into streams, read one at a time: of a stream that the parser reads an object from, it keeps
// all objects for good.
//
// Knows    the form of such a stream (ISO 32000-1, 7.5.7). What is not quite in this form is left to the parser.
// Owns     the streams that were read last, unpacked.
// For      pdf_file.
#ifndef OLH_IMPORT_PACKED_OBJECTS_H
#define OLH_IMPORT_PACKED_OBJECTS_H

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "pdf_parser.h"

namespace olh_import {

class PackedObjects {
 public:
  PackedObjects(QPDF& pdf, const std::map<QPDFObjGen, QPDFXRefEntry>& table);

  // What a reference to a packed object leads to, as a value of its own: nobody else sees a change of it. Everything else
  // as it is.
  QPDFObjectHandle read(const QPDFObjectHandle& object);

 private:
  struct Stream {
    std::string bytes;
    std::map<int, std::size_t> places;  // of the objects, by their numbers
    std::vector<std::size_t> starts;    // the same in their order, and the end
  };
  const Stream& unpacked(int number);
  std::optional<std::string> text_of(int object, int stream);

  QPDF& pdf_;
  std::vector<std::pair<int, int>> streams_of_objects_;  // in the order of the objects' numbers
  std::map<int, Stream> streams_;
  std::size_t kept_ = 0;      // bytes of these
  std::size_t unpacked_ = 0;  // bytes, of all that were
};

}  // namespace olh_import

#endif
