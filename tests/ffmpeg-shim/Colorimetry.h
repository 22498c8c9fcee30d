#pragma once

#include <array>

namespace stackreel::shim
{

/// Three components: R'G'B', linear RGB, XYZ or L*a*b*.
using Triple = std::array<double, 3>;

/// The chromaticities of red, green and blue, x and y each. White is D65.
using Primaries = std::array<std::array<double, 2>, 3>;

/// ITU-T H.273, table 2.
inline constexpr Primaries bt709Primaries{{{0.640, 0.330}, {0.300, 0.600}, {0.150, 0.060}}};
inline constexpr Primaries bt601Primaries525{{{0.630, 0.340}, {0.310, 0.595}, {0.155, 0.070}}};
inline constexpr Primaries bt601Primaries625{{{0.64, 0.33}, {0.29, 0.60}, {0.15, 0.06}}};
inline constexpr Primaries bt2020Primaries{{{0.708, 0.292}, {0.170, 0.797}, {0.131, 0.046}}};
inline constexpr Primaries p3Primaries{{{0.680, 0.320}, {0.265, 0.690}, {0.150, 0.060}}};

/// The luminance of linear RGB is 1 for white (SMPTE RP 177).
Triple xyzOf(const Triple& rgb, const Primaries& primaries);
Triple rgbOf(const Triple& xyz, const Primaries& primaries);

/// L*a*b* for the white of D65 (CIE 15).
Triple labOf(const Triple& xyz);

/// The colour difference CIEDE2000 (CIE 142).
double differenceOf(const Triple& lab, const Triple& otherLab);

/// The weights of red and blue in the luma (H.273, table 4).
struct LumaWeights {
    double red = 0;
    double blue = 0;
};

inline constexpr LumaWeights bt709Luma{0.2126, 0.0722};
inline constexpr LumaWeights bt601Luma{0.299, 0.114};
inline constexpr LumaWeights fccLuma{0.30, 0.11};
inline constexpr LumaWeights smpte240Luma{0.212, 0.087};
inline constexpr LumaWeights bt2020Luma{0.2627, 0.0593};

/// Y'CbCr codes of R'G'B' (H.273, equations 1 to 3), not rounded.
Triple codesOf(const Triple& rgb, const LumaWeights& weights, bool fullRange, int bits);
/// R'G'B' of 8-bit codes with limited range.
Triple signalOf(const Triple& codes, const LumaWeights& weights);

} // namespace stackreel::shim
