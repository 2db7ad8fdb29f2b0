#include "packed_objects.h"

#include <algorithm>
#include <qpdf/Buffer.hh>
#include <qpdf/QPDFExc.hh>
#include <sstream>
#include <stdexcept>

#include "bounds.h"

namespace olh_import {

namespace {

constexpr std::size_t kMostKept = std::size_t{32} * 1024 * 1024;

}  // namespace

PackedObjects::PackedObjects(QPDF& pdf, const std::map<QPDFObjGen, QPDFXRefEntry>& table) : pdf_(pdf) {
  for (const auto& [object, entry] : table)
    if (entry.getType() == 2) streams_of_objects_.emplace_back(object.getObj(), entry.getObjStreamNumber());
}

QPDFObjectHandle PackedObjects::read(const QPDFObjectHandle& object) {
  const int number = object.getObjectID();
  const auto found = std::ranges::lower_bound(streams_of_objects_, number, {}, &std::pair<int, int>::first);
  if (number == 0 || found == streams_of_objects_.end() || found->first != number) return object;
  try {
    const std::optional<std::string> text = text_of(number, found->second);
    return text ? QPDFObjectHandle::parse(&pdf_, *text) : object;
  } catch (const QPDFExc&) {
    return object;
  }
}

std::optional<std::string> PackedObjects::text_of(int object, int stream) {
  const Stream& from = unpacked(stream);
  const auto place = from.places.find(object);
  if (place == from.places.end()) return std::nullopt;
  const auto end = std::ranges::upper_bound(from.starts, place->second);
  if (end == from.starts.end()) return std::nullopt;
  return from.bytes.substr(place->second, *end - place->second);
}

const PackedObjects::Stream& PackedObjects::unpacked(int number) {
  if (const auto known = streams_.find(number); known != streams_.end()) return known->second;
  Stream made;
  if (QPDFObjectHandle packed = pdf_.getObjectByID(number, 0); packed.isStream()) {
    const std::shared_ptr<Buffer> bytes = packed.getStreamData(qpdf_dl_specialized);
    made.bytes.assign(reinterpret_cast<const char*>(bytes->getBuffer()), bytes->getSize());
    const std::size_t first = packed.getDict().getKey("/First").getUIntValueAsUInt();
    const int count = packed.getDict().getKey("/N").getIntValueAsInt();
    std::istringstream table(made.bytes.substr(0, first));
    std::size_t from = 0;
    for (int i = 0, object = 0; i < count && table >> object >> from; ++i) {
      made.places[object] = first + from;
      made.starts.push_back(first + from);
    }
    made.starts.push_back(made.bytes.size());
    std::ranges::sort(made.starts);
  }
  unpacked_ += made.bytes.size();
  if (unpacked_ > kLargestPacked) throw std::runtime_error("too much is packed in it");
  kept_ += made.bytes.size();
  if (kept_ > kMostKept) {
    streams_.clear();
    kept_ = made.bytes.size();
  }
  return streams_[number] = std::move(made);
}

}  // namespace olh_import
