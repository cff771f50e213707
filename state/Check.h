#pragma once

#include <cstdio>
#include <cstdlib>

// Cache checks (the TABULA_CACHE_CHECKS build option): where a cache is
// trusted, the code computes the value afresh as well and compares. A failed
// check stops the program in any build type, naming the condition and where
// it stands.
namespace TabulaControl::detail {

[[noreturn]] inline void cacheCheckFailed(const char* condition, const char* file, int line)
{
    std::fprintf(stderr, "%s:%d: cache check failed: %s\n", file, line, condition);
    std::fflush(stderr);
    std::abort();
}

}  // namespace TabulaControl::detail

#define TABULA_CHECK(condition) \
    ((condition) ? void(0) : ::TabulaControl::detail::cacheCheckFailed(#condition, __FILE__, __LINE__))
