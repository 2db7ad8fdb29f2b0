// Which kind of viewer comes first, and which one shows the next document.
//
// Owns     the current viewer and the viewer order.
// For      the entry points of this room: whoever shows a document sets current_viewer right before.
#ifndef OLH_CLIENT_VIEWER_ORDER_H
#define OLH_CLIENT_VIEWER_ORDER_H

// An OlhViewer; what showDocGotoTag goes by.
extern int current_viewer;

// The preferred viewer, then the other one. Whatever OlhSetViewer was given may stand here.
extern int viewerOrder[2];

#endif
