#include "fit/vectorregisters.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

namespace fit
{

#if defined(__x86_64__) || defined(__i386__)

namespace
{

__attribute__((target("avx"))) void clearWithAvx() { _mm256_zeroupper(); }

} // namespace

void clearUpperHalves()
{
    if (__builtin_cpu_supports("avx"))
        clearWithAvx();
}

#else

void clearUpperHalves() {}

#endif

} // namespace fit
