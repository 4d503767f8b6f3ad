// SPDX-License-Identifier: GPL-3.0-or-later
//
// What would make the viewer large is left out here by standing in its place.

#include <cstdlib>

/// Nothing in the viewer throws; the usual way to end would bring along what reads the names of exceptions.
namespace __gnu_cxx
{
void __verbose_terminate_handler();
void __verbose_terminate_handler()
{
    std::abort();
}
} // namespace __gnu_cxx

// The JPEG library asks at run time which of its steps the processor has instructions of its own for. The answer is
// none: with those steps its part would be three times as large.

namespace
{
[[noreturn]] void Never_Called()
{
    __builtin_trap();
}
} // namespace

// The arguments do not matter to what takes none of them.
#define STEP(name)                                                                                                     \
    extern "C" int jsimd_can_##name();                                                                                 \
    int jsimd_can_##name()                                                                                             \
    {                                                                                                                  \
        return 0;                                                                                                      \
    }                                                                                                                  \
    extern "C" void jsimd_##name();                                                                                    \
    void jsimd_##name()                                                                                                \
    {                                                                                                                  \
        Never_Called();                                                                                                \
    }

STEP(h2v1_fancy_upsample)
STEP(h2v1_merged_upsample)
STEP(h2v1_upsample)
STEP(h2v2_fancy_upsample)
STEP(h2v2_merged_upsample)
STEP(h2v2_upsample)
STEP(idct_2x2)
STEP(idct_4x4)
STEP(idct_float)
STEP(idct_ifast)
STEP(idct_islow)
STEP(ycc_rgb)
STEP(ycc_rgb565)

extern "C" void jsimd_ycc_rgb_convert();
void jsimd_ycc_rgb_convert()
{
    Never_Called();
}
extern "C" void jsimd_ycc_rgb565_convert();
void jsimd_ycc_rgb565_convert()
{
    Never_Called();
}
