// Whether this is a build with the address sanitizer. It reserves terabytes of addresses, so no limit can be
// set on them.
#pragma once

namespace boreforge {

#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool kSanitized = true;
#elif defined(__has_feature)
inline constexpr bool kSanitized = __has_feature(address_sanitizer);
#else
inline constexpr bool kSanitized = false;
#endif

}  // namespace boreforge
