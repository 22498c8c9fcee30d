#pragma once

#include <array>
#include <string>
#include <vector>

namespace stackreel
{

/// Red, green and blue, each from 0 to 1, or a linear quantity of the same three.
using Rgb = std::array<double, 3>;

/// The points per component of a table. With 33 the largest error, of a strong green in PQ, is a ΔE
/// (CIEDE2000) of 1.
inline constexpr int colourTablePoints = 33;

/// A function of three components. The export applies it from a file by FFmpeg's filter `lut3d`, the player
/// by `ColourCube`.
struct ColourTable {
    std::string name; ///< of the file, without its suffix
    Rgb (*convert)(const Rgb&);
};

/// All tables. The display that they refer to for standard dynamic range is that of ITU-R BT.1886 with a
/// perfect black: its light is the signal to the power of 2.4.
///
/// - "pq", "hlg": from BT.2100 with the primaries of BT.2020 to BT.709, see `toneMapped`. "pq-p3", "hlg-p3",
///   "pq-bt709", "hlg-bt709": the same from the primaries of P3 with the white of D65, and of BT.709.
/// - "gamma22", "gamma28": from a display of gamma 2.2 or 2.8 (ITU-T H.273, transfer characteristics 4 and
/// 5).
/// - "smpte170m", "bt2020", "p3": from the primaries of BT.601 for 525 lines, of BT.2020, and of P3 with the
///   white of D65 (H.273, primaries 6, 9 and 12). Colours that BT.709 does not have are clipped.
const std::vector<ColourTable>& colourTables();

/// Changes light for high dynamic range into light for standard dynamic range. In both, 1 is the reference
/// white for graphics, 203 cd/m² (ITU-R BT.2408, table 1). The largest component stays as it is up to 0.6,
/// which leaves skin and an 18 % grey card unchanged. Above, it follows a hyperbola (the curve named
/// "mobius" in FFmpeg's filter `tonemap`) without a corner to 1 for the nominal peak of 1000 cd/m². The other
/// components are scaled with it, which keeps the hue.
Rgb toneMapped(const Rgb& light);

/// The table in the "cube" format of Adobe and Iridas: `size` points per component, red first.
std::string cubeFile(const ColourTable& table, int size);

} // namespace stackreel
