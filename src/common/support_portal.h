// The maker's support portal: the last resort for what is nowhere, and a scope of searches.
//
// Knows    that its base URL is fixed when the library is built and may be empty: then nothing is opened there.
// For      the client API and olh_doclist.
#ifndef OLH_COMMON_SUPPORT_PORTAL_H
#define OLH_COMMON_SUPPORT_PORTAL_H

namespace olh {

inline constexpr bool kHasSupportPortal = sizeof OLH_SUPPORT_PORTAL_URL > 1;

}  // namespace olh

#endif
