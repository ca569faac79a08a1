#include "web/css/CSSColorSpace.h"

#include <algorithm>
#include <cmath>

namespace {

using Matrix = std::array<ColorComponents, 3>;

ColorComponents multiply(const Matrix& m, const ColorComponents& v)
{
    return {m[0][0] * v[0] + m[0][1] * v[1] + m[0][2] * v[2], m[1][0] * v[0] + m[1][1] * v[1] + m[1][2] * v[2],
            m[2][0] * v[0] + m[2][1] * v[1] + m[2][2] * v[2]};
}

// Primaries of the RGB spaces, linear light to XYZ (D65, or D50 for ProPhoto) and back.
constexpr Matrix kSRGBToXYZ = {{{0.41239079926595934, 0.357584339383878, 0.1804807884018343},
                                {0.21263900587151027, 0.715168678767756, 0.07219231536073371},
                                {0.01933081871559182, 0.11919477979462598, 0.9505321522496607}}};
constexpr Matrix kXYZToSRGB = {{{3.2409699419045226, -1.537383177570094, -0.4986107602930034},
                                {-0.9692436362808796, 1.8759675015077202, 0.04155505740717559},
                                {0.05563007969699366, -0.20397695888897652, 1.0569715142428786}}};
constexpr Matrix kP3ToXYZ = {{{0.4865709486482162, 0.26566769316909306, 0.1982172852343625},
                              {0.2289745640697488, 0.6917385218365064, 0.079286914093745},
                              {0.0, 0.04511338185890264, 1.043944368900976}}};
constexpr Matrix kXYZToP3 = {{{2.493496911941425, -0.9313836179191239, -0.40271078445071684},
                              {-0.8294889695615747, 1.7626640603183463, 0.023624685841943577},
                              {0.03584583024378447, -0.07617238926804182, 0.9568845240076872}}};
constexpr Matrix kA98ToXYZ = {{{0.5766690429101305, 0.1855582379065463, 0.1882286462349947},
                               {0.29734497525053605, 0.6273635662554661, 0.07529145849399788},
                               {0.02703136138641234, 0.07068885253582723, 0.9913375368376388}}};
constexpr Matrix kXYZToA98 = {{{2.0415879038107465, -0.5650069742788596, -0.34473135077832956},
                               {-0.9692436362808795, 1.8759675015077202, 0.04155505740717557},
                               {0.013444280632031142, -0.11836239223101838, 1.0151749943912054}}};
constexpr Matrix kRec2020ToXYZ = {{{0.6369580483012914, 0.14461690358620832, 0.1688809751641721},
                                   {0.2627002120112671, 0.6779980715188708, 0.05930171646986196},
                                   {0.0, 0.028072693049087428, 1.060985057710791}}};
constexpr Matrix kXYZToRec2020 = {{{1.716651187971268, -0.355670783776392, -0.253366281373660},
                                   {-0.666684351832489, 1.616481236634939, 0.0157685458139111},
                                   {0.017639857445311, -0.042770613257809, 0.942103121235474}}};
constexpr Matrix kProPhotoToXYZD50 = {{{0.7977666449006423, 0.13518129740053308, 0.0313477341283922},
                                       {0.2880748288194013, 0.711835234241873, 0.00008993693872564},
                                       {0.0, 0.0, 0.8251046025104602}}};
constexpr Matrix kXYZD50ToProPhoto = {{{1.3457868816471583, -0.25557208737979464, -0.05110186497554526},
                                       {-0.5446307051249019, 1.5082477428451468, 0.02052744743642139},
                                       {0.0, 0.0, 1.2119675456389452}}};
// Bradford chromatic adaptation between the D65 and D50 white points.
constexpr Matrix kD65ToD50 = {{{1.0479297925449969, 0.022946870601609652, -0.05019226628920524},
                               {0.02962780877005599, 0.9904344267538799, -0.017073799063418826},
                               {-0.009243040646204504, 0.015055191490298152, 0.7518742814281371}}};
constexpr Matrix kD50ToD65 = {{{0.955473421488075, -0.02309845494876471, 0.06325924320057072},
                               {-0.0283697093338637, 1.0099953980813041, 0.021041441191917323},
                               {0.012314014864481998, -0.020507649298898964, 1.330365926242124}}};
// OKLab: XYZ (D65) to cone responses, and their cube roots to Lab-like axes.
constexpr Matrix kXYZToLMS = {{{0.8190224379967030, 0.3619062600528904, -0.1288737815209879},
                               {0.0329836539323885, 0.9292868615863434, 0.0361446663506424},
                               {0.0481771893596242, 0.2642395317527308, 0.6335478284694309}}};
constexpr Matrix kLMSToOKLab = {{{0.2104542683093140, 0.7936177747023054, -0.0040720430116193},
                                 {1.9779985324311684, -2.4285922420485799, 0.4505937096174110},
                                 {0.0259040424655478, 0.7827717124575296, -0.8086757549230774}}};
constexpr Matrix kOKLabToLMS = {{{1.0, 0.3963377773761749, 0.2158037573099136},
                                 {1.0, -0.1055613458156586, -0.0638541728258133},
                                 {1.0, -0.0894841775298119, -1.2914855480194092}}};
constexpr Matrix kLMSToXYZ = {{{1.2268798758459243, -0.5578149944602171, 0.2813910456659647},
                               {-0.0405757452148008, 1.1122868032803170, -0.0717110580655164},
                               {-0.0763729366746601, -0.4214933324022432, 1.5869240198367816}}};

constexpr ColorComponents kD50White = {0.3457 / 0.3585, 1.0, (1.0 - 0.3457 - 0.3585) / 0.3585};
constexpr double kLabEpsilon = 216.0 / 24389;
constexpr double kLabKappa = 24389.0 / 27;

// Transfer functions, odd-extended so that out-of-gamut values survive a round trip.
double signedPow(double v, double exponent) { return std::copysign(std::pow(std::fabs(v), exponent), v); }


double proPhotoToLinear(double v) { return std::fabs(v) <= 16.0 / 512 ? v / 16 : signedPow(v, 1.8); }
double proPhotoFromLinear(double v) { return std::fabs(v) >= 1.0 / 512 ? signedPow(v, 1 / 1.8) : 16 * v; }

constexpr double kRec2020Alpha = 1.09929682680944;
constexpr double kRec2020Beta = 0.018053968510807;

double rec2020ToLinear(double v)
{
    double a = std::fabs(v);
    return a < kRec2020Beta * 4.5 ? v / 4.5 : std::copysign(std::pow((a + kRec2020Alpha - 1) / kRec2020Alpha, 1 / 0.45), v);
}

double rec2020FromLinear(double v)
{
    double a = std::fabs(v);
    return a > kRec2020Beta ? std::copysign(kRec2020Alpha * std::pow(a, 0.45) - (kRec2020Alpha - 1), v) : 4.5 * v;
}

template <typename F>
ColorComponents each(const ColorComponents& c, F f)
{
    return {f(c[0]), f(c[1]), f(c[2])};
}

ColorComponents labFromXYZD50(const ColorComponents& xyz)
{
    ColorComponents f;
    for (int i = 0; i < 3; ++i) {
        double v = xyz[i] / kD50White[i];
        f[i] = v > kLabEpsilon ? std::cbrt(v) : (kLabKappa * v + 16) / 116;
    }
    return {116 * f[1] - 16, 500 * (f[0] - f[1]), 200 * (f[1] - f[2])};
}

ColorComponents labToXYZD50(const ColorComponents& lab)
{
    double f1 = (lab[0] + 16) / 116;
    double f0 = lab[1] / 500 + f1;
    double f2 = f1 - lab[2] / 200;
    double x = f0 * f0 * f0 > kLabEpsilon ? f0 * f0 * f0 : (116 * f0 - 16) / kLabKappa;
    double y = lab[0] > kLabKappa * kLabEpsilon ? f1 * f1 * f1 : lab[0] / kLabKappa;
    double z = f2 * f2 * f2 > kLabEpsilon ? f2 * f2 * f2 : (116 * f2 - 16) / kLabKappa;
    return {x * kD50White[0], y * kD50White[1], z * kD50White[2]};
}

ColorComponents toPolar(const ColorComponents& lab)
{
    double chroma = std::hypot(lab[1], lab[2]);
    double hue = std::atan2(lab[2], lab[1]) * 180 / M_PI;
    if (hue < 0)
        hue += 360;
    return {lab[0], chroma, hue};
}

ColorComponents fromPolar(const ColorComponents& lch)
{
    double radians = lch[2] * M_PI / 180;
    return {lch[0], lch[1] * std::cos(radians), lch[1] * std::sin(radians)};
}

// sRGB (0..1) to HSL (degrees, percentages as 0..100), and back.
ColorComponents hslFromSRGB(const ColorComponents& rgb)
{
    double high = std::max({rgb[0], rgb[1], rgb[2]}), low = std::min({rgb[0], rgb[1], rgb[2]});
    double lightness = (high + low) / 2, d = high - low, hue = 0, saturation = 0;
    if (d != 0) {
        saturation = (lightness == 0 || lightness == 1) ? 0 : (high - lightness) / std::min(lightness, 1 - lightness);
        if (high == rgb[0])
            hue = (rgb[1] - rgb[2]) / d + (rgb[1] < rgb[2] ? 6 : 0);
        else if (high == rgb[1])
            hue = (rgb[2] - rgb[0]) / d + 2;
        else
            hue = (rgb[0] - rgb[1]) / d + 4;
        hue *= 60;
    }
    if (saturation < 0) {
        // Out-of-gamut colours: the opposite hue with a positive saturation.
        hue += 180;
        saturation = -saturation;
    }
    return {std::fmod(hue, 360), saturation * 100, lightness * 100};
}

ColorComponents hslToSRGB(const ColorComponents& hsl)
{
    double hue = std::fmod(hsl[0], 360);
    if (hue < 0)
        hue += 360;
    double saturation = hsl[1] / 100, lightness = hsl[2] / 100;
    auto f = [&](double n) {
        double k = std::fmod(n + hue / 30, 12);
        double a = saturation * std::min(lightness, 1 - lightness);
        return lightness - a * std::max(-1.0, std::min({k - 3, 9 - k, 1.0}));
    };
    return {f(0), f(8), f(4)};
}

ColorComponents hwbFromSRGB(const ColorComponents& rgb)
{
    ColorComponents hsl = hslFromSRGB(rgb);
    double white = std::min({rgb[0], rgb[1], rgb[2]}), black = 1 - std::max({rgb[0], rgb[1], rgb[2]});
    return {hsl[0], white * 100, black * 100};
}

ColorComponents hwbToSRGB(const ColorComponents& hwb)
{
    double white = hwb[1] / 100, black = hwb[2] / 100;
    if (white + black >= 1) {
        double gray = white / (white + black);
        return {gray, gray, gray};
    }
    ColorComponents rgb = hslToSRGB({hwb[0], 100, 50});
    return each(rgb, [&](double v) { return v * (1 - white - black) + white; });
}

ColorComponents toXYZD65(const ColorComponents& c, CSSColorSpace space)
{
    switch (space) {
    case CSSColorSpace::SRGB: return multiply(kSRGBToXYZ, each(c, srgbToLinear));
    case CSSColorSpace::SRGBLinear: return multiply(kSRGBToXYZ, c);
    case CSSColorSpace::DisplayP3: return multiply(kP3ToXYZ, each(c, srgbToLinear));
    case CSSColorSpace::A98RGB: return multiply(kA98ToXYZ, each(c, [](double v) { return signedPow(v, 563.0 / 256); }));
    case CSSColorSpace::ProPhotoRGB: return multiply(kD50ToD65, multiply(kProPhotoToXYZD50, each(c, proPhotoToLinear)));
    case CSSColorSpace::Rec2020: return multiply(kRec2020ToXYZ, each(c, rec2020ToLinear));
    case CSSColorSpace::XYZD50: return multiply(kD50ToD65, c);
    case CSSColorSpace::XYZD65: return c;
    case CSSColorSpace::Lab: return multiply(kD50ToD65, labToXYZD50(c));
    case CSSColorSpace::LCH: return multiply(kD50ToD65, labToXYZD50(fromPolar(c)));
    case CSSColorSpace::OKLab: return multiply(kLMSToXYZ, each(multiply(kOKLabToLMS, c), [](double v) { return v * v * v; }));
    case CSSColorSpace::OKLCH: return toXYZD65(fromPolar(c), CSSColorSpace::OKLab);
    case CSSColorSpace::HSL: return toXYZD65(hslToSRGB(c), CSSColorSpace::SRGB);
    case CSSColorSpace::HWB: return toXYZD65(hwbToSRGB(c), CSSColorSpace::SRGB);
    }
    return c;
}

ColorComponents fromXYZD65(const ColorComponents& xyz, CSSColorSpace space)
{
    switch (space) {
    case CSSColorSpace::SRGB: return each(multiply(kXYZToSRGB, xyz), srgbFromLinear);
    case CSSColorSpace::SRGBLinear: return multiply(kXYZToSRGB, xyz);
    case CSSColorSpace::DisplayP3: return each(multiply(kXYZToP3, xyz), srgbFromLinear);
    case CSSColorSpace::A98RGB: return each(multiply(kXYZToA98, xyz), [](double v) { return signedPow(v, 256.0 / 563); });
    case CSSColorSpace::ProPhotoRGB: return each(multiply(kXYZD50ToProPhoto, multiply(kD65ToD50, xyz)), proPhotoFromLinear);
    case CSSColorSpace::Rec2020: return each(multiply(kXYZToRec2020, xyz), rec2020FromLinear);
    case CSSColorSpace::XYZD50: return multiply(kD65ToD50, xyz);
    case CSSColorSpace::XYZD65: return xyz;
    case CSSColorSpace::Lab: return labFromXYZD50(multiply(kD65ToD50, xyz));
    case CSSColorSpace::LCH: return toPolar(labFromXYZD50(multiply(kD65ToD50, xyz)));
    case CSSColorSpace::OKLab: return multiply(kLMSToOKLab, each(multiply(kXYZToLMS, xyz), [](double v) { return std::cbrt(v); }));
    case CSSColorSpace::OKLCH: return toPolar(fromXYZD65(xyz, CSSColorSpace::OKLab));
    case CSSColorSpace::HSL: return hslFromSRGB(fromXYZD65(xyz, CSSColorSpace::SRGB));
    case CSSColorSpace::HWB: return hwbFromSRGB(fromXYZD65(xyz, CSSColorSpace::SRGB));
    }
    return xyz;
}

struct SpaceName {
    std::string_view name;
    CSSColorSpace space;
};

constexpr SpaceName kColorFunctionSpaces[] = {
    {"srgb", CSSColorSpace::SRGB},           {"srgb-linear", CSSColorSpace::SRGBLinear},
    {"display-p3", CSSColorSpace::DisplayP3}, {"a98-rgb", CSSColorSpace::A98RGB},
    {"prophoto-rgb", CSSColorSpace::ProPhotoRGB}, {"rec2020", CSSColorSpace::Rec2020},
    {"xyz-d50", CSSColorSpace::XYZD50},      {"xyz-d65", CSSColorSpace::XYZD65},
    {"xyz", CSSColorSpace::XYZD65},
};

} // namespace

double srgbToLinear(double v)
{
    double a = std::fabs(v);
    return a <= 0.04045 ? v / 12.92 : std::copysign(std::pow((a + 0.055) / 1.055, 2.4), v);
}

double srgbFromLinear(double v)
{
    double a = std::fabs(v);
    return a > 0.0031308 ? std::copysign(1.055 * std::pow(a, 1 / 2.4) - 0.055, v) : 12.92 * v;
}

std::optional<CSSColorSpace> colorFunctionSpace(std::string_view name)
{
    for (const auto& entry : kColorFunctionSpaces) {
        if (entry.name == name)
            return entry.space;
    }
    return {};
}

std::string_view colorFunctionName(CSSColorSpace space)
{
    for (const auto& entry : kColorFunctionSpaces) {
        if (entry.space == space)
            return entry.name;
    }
    return "srgb";
}

bool isColorFunctionSpace(CSSColorSpace space) { return space <= CSSColorSpace::XYZD65; }

int hueIndex(CSSColorSpace space)
{
    switch (space) {
    case CSSColorSpace::LCH:
    case CSSColorSpace::OKLCH: return 2;
    case CSSColorSpace::HSL:
    case CSSColorSpace::HWB: return 0;
    default: return -1;
    }
}

ColorComponents convertColor(const ColorComponents& components, CSSColorSpace from, CSSColorSpace to)
{
    if (from == to)
        return components;
    // Short cuts that skip XYZ, so that the common cases stay exact.
    if (from == CSSColorSpace::SRGB && to == CSSColorSpace::HSL)
        return hslFromSRGB(components);
    if (from == CSSColorSpace::SRGB && to == CSSColorSpace::HWB)
        return hwbFromSRGB(components);
    if (from == CSSColorSpace::HSL && to == CSSColorSpace::SRGB)
        return hslToSRGB(components);
    if (from == CSSColorSpace::HWB && to == CSSColorSpace::SRGB)
        return hwbToSRGB(components);
    if (from == CSSColorSpace::SRGB && to == CSSColorSpace::SRGBLinear)
        return each(components, srgbToLinear);
    if (from == CSSColorSpace::SRGBLinear && to == CSSColorSpace::SRGB)
        return each(components, srgbFromLinear);
    if (from == CSSColorSpace::Lab && to == CSSColorSpace::LCH)
        return toPolar(components);
    if (from == CSSColorSpace::LCH && to == CSSColorSpace::Lab)
        return fromPolar(components);
    if (from == CSSColorSpace::OKLab && to == CSSColorSpace::OKLCH)
        return toPolar(components);
    if (from == CSSColorSpace::OKLCH && to == CSSColorSpace::OKLab)
        return fromPolar(components);
    return fromXYZD65(toXYZD65(components, from), to);
}
