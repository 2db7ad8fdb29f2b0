// What a file is, for the header Content-Type.
//
// Knows    the type behind the ending of a name, and how the character set of a text is told: by what a page declares, or
//          by its being UTF-8. Where neither tells, nothing is claimed, and the browser does as with a file of the disk.
// For      page_server.
#ifndef OLH_TOOLS_SERVE_MEDIA_TYPE_H
#define OLH_TOOLS_SERVE_MEDIA_TYPE_H

#include <string>
#include <string_view>

namespace olh_serve {

// Whether the bytes of a file of that name have a say in its type.
bool depends_on_content(std::string_view name);

// "text/html; charset=utf-8". `start` is the beginning of the file, or all of it; "" where it has no say.
std::string media_type(std::string_view name, std::string_view start);

bool is_html(std::string_view media_type);

}  // namespace olh_serve

#endif
