// Entry points of older hosts that have no meaning any more. They look at no argument, initialise nothing and
// write nothing.
#include "olh/olh.h"

int OlhAppExit(...) noexcept { return OLH_RESULT_FAILED; }
int OlhDocGotoPage(...) noexcept { return OLH_RESULT_FAILED; }
int OlhCheckForPlugins(...) noexcept { return OLH_RESULT_FAILED; }
int OlhCloseAllDocs(...) noexcept { return OLH_RESULT_FAILED; }
int OlhDocClose(...) noexcept { return OLH_RESULT_FAILED; }
int OlhDocFind(...) noexcept { return OLH_RESULT_FAILED; }
int OlhMenuItemExecute(...) noexcept { return OLH_RESULT_FAILED; }
