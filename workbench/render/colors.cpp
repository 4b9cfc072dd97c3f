#include "render/colors.h"

#include <algorithm>

namespace workbench {

namespace {

/// Between evenly spread colours.
template <std::size_t Count>
Color along(const std::array<Color, Count>& stops, float position)
{
    const float place = std::clamp(position, 0.0F, 1.0F) * static_cast<float>(Count - 1);
    const std::size_t stop = std::min(static_cast<std::size_t>(place), Count - 2);
    return mixed(stops[stop], stops[stop + 1], place - static_cast<float>(stop));
}

} // namespace

Color mixed(const Color& a, const Color& b, float share)
{
    Color color{};
    for (std::size_t channel = 0; channel < color.size(); ++channel)
        color[channel] = a[channel] + (b[channel] - a[channel]) * share;
    return color;
}

Color falloffColor(float weight)
{
    static const std::array<Color, 5> stops = {
        Color{0.10F, 0.02F, 0.02F, 0.0F}, Color{0.42F, 0.06F, 0.04F, 0.75F},
        Color{0.86F, 0.22F, 0.06F, 0.95F}, Color{1.0F, 0.60F, 0.10F, 1.0F}, Color{1.0F, 0.95F, 0.25F, 1.0F}};
    return along(stops, weight);
}

Color weightColor(float weight)
{
    static const std::array<Color, 6> stops = {
        Color{0.25F, 0.30F, 0.50F, 1.0F}, Color{0.18F, 0.43F, 0.70F, 1.0F}, Color{0.13F, 0.60F, 0.62F, 1.0F},
        Color{0.45F, 0.76F, 0.42F, 1.0F}, Color{0.93F, 0.80F, 0.33F, 1.0F}, Color{0.98F, 0.53F, 0.26F, 1.0F}};
    return along(stops, weight);
}

} // namespace workbench
