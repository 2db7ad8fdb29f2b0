// The names of viewers and display types, as the trace log writes them.
//
// Knows    the two tables and the bounds of their values.
// For      the entry points, which render their arguments.
#ifndef OLH_CLIENT_NAMES_H
#define OLH_CLIENT_NAMES_H

// In value order, beginning with OLH_VIEWER_TOMEDECK (-2), and a null entry at the end.
extern const char* const olhViewerNames[];

// In value order, beginning with OLH_DISPLAY_NORMAL (0), and a null entry at the end.
extern const char* const olhDisplayTypeNames[];

// The name of a viewer or display type; "" for a value that has none. The strings are static.
const char* OlhViewer_toString(int viewer) noexcept;
const char* OlhDisplayType_toString(int type) noexcept;

#endif
