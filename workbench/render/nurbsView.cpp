#include "render/nurbsView.h"

#include "render/nurbsBasis.h"

#include <algorithm>

namespace workbench {

namespace {

constexpr int kCurveSteps = 16; ///< per span
constexpr int kMostSurfaceSteps = 10, kSurfaceSamples = 200;

/// Sums over control points, divided by their weights at the end.
struct Sum {
    Imath::V3d point{0, 0, 0}, alongU{0, 0, 0}, alongV{0, 0, 0};
    double weight = 0, weightU = 0, weightV = 0;
    Color color{};
};

/// Colours of the control points, for blending.
std::vector<Color> colorsOf(const ShapeView& shape, const std::optional<WeightMap>& weights,
                            const Color& plain)
{
    std::vector<Color> colors(shape.world.size(), plain);
    for (std::size_t point = 0; weights && point < colors.size(); ++point)
        colors[point] = weights->color(point);
    return colors;
}

void addControl(Sum& sum, const Imath::V3d& point, double weight, double share, const Color& color)
{
    sum.point += point * (weight * share);
    sum.weight += weight * share;
    for (std::size_t channel = 0; channel < color.size(); ++channel)
        sum.color[channel] += color[channel] * static_cast<float>(share);
}

double weightOf(const std::vector<double>& weights, std::size_t point)
{
    return point < weights.size() ? weights[point] : 1.0;
}

class SurfaceSampler {
public:
    SurfaceSampler(const host::SurfaceData& data, const ShapeView& view,
                   const std::optional<WeightMap>& weights)
        : surface(data), shape(view), colors(colorsOf(view, weights, kSurfaceColor))
    {}

    DrawVertex at(const BasisSample& u, const BasisSample& v) const
    {
        Sum sum;
        for (std::size_t i = 0; i < u.values.size(); ++i) {
            for (std::size_t j = 0; j < v.values.size(); ++j)
                add(sum, u, v, i, j);
        }
        const Imath::V3d point = sum.point / sum.weight;
        // The slopes of a quotient, both times the weight, which does not turn the normal.
        const Imath::V3d normal =
            ((sum.alongU - point * sum.weightU).cross(sum.alongV - point * sum.weightV)).normalized();
        DrawVertex drawn = drawVertex(point, sum.color);
        for (int axis = 0; axis < 3; ++axis)
            drawn.normal[axis] = static_cast<float>(normal[axis]);
        return drawn;
    }

private:
    void add(Sum& sum, const BasisSample& u, const BasisSample& v, std::size_t i, std::size_t j) const
    {
        const std::size_t point = (u.first + i) * static_cast<std::size_t>(surface.numV) + v.first + j;
        const double weight = weightOf(surface.weights, point);
        addControl(sum, shape.world[point], weight, u.values[i] * v.values[j], colors[point]);
        const double slopeU = weight * u.slopes[i] * v.values[j], slopeV = weight * u.values[i] * v.slopes[j];
        sum.alongU += shape.world[point] * slopeU;
        sum.alongV += shape.world[point] * slopeV;
        sum.weightU += slopeU;
        sum.weightV += slopeV;
    }

    const host::SurfaceData& surface;
    const ShapeView& shape;
    std::vector<Color> colors;
};

int stepsPerSpan(int controlPoints, int degree)
{
    return std::clamp(kSurfaceSamples / std::max(1, controlPoints - degree), 2, kMostSurfaceSteps);
}

/// A grid of sampled vertices as triangles and, along the knots, lines.
void addGrid(SceneView& view, const std::vector<DrawVertex>& vertices, const std::vector<BasisSample>& u,
             const std::vector<BasisSample>& v, const Color& lineColor)
{
    const auto first = static_cast<unsigned>(view.surfaces.vertices.size());
    const auto firstLine = static_cast<unsigned>(view.lines.vertices.size());
    for (DrawVertex vertex : vertices) {
        view.surfaces.vertices.push_back(vertex);
        std::copy(lineColor.begin(), lineColor.end(), vertex.color);
        view.lines.vertices.push_back(vertex);
    }
    const auto across = static_cast<unsigned>(v.size());
    for (unsigned row = 0; row < u.size(); ++row) {
        for (unsigned column = 0; column < across; ++column) {
            const unsigned at = row * across + column;
            const bool nextRow = row + 1 < u.size(), nextColumn = column + 1 < across;
            if (nextRow && nextColumn) {
                for (const unsigned corner : {0U, across, 1U, 1U, across, across + 1U})
                    view.surfaces.indices.push_back(first + at + corner);
            }
            if (nextRow && v[column].atKnot)
                view.lines.indices.insert(view.lines.indices.end(),
                                          {firstLine + at, firstLine + at + across});
            if (nextColumn && u[row].atKnot)
                view.lines.indices.insert(view.lines.indices.end(), {firstLine + at, firstLine + at + 1});
        }
    }
}

} // namespace

bool addCurve(SceneView& view, const ShapeView& shape, const std::optional<WeightMap>& weights)
{
    const auto& curve = static_cast<const host::CurveData&>(shape.geometry);
    const std::vector<BasisSample> samples =
        basisSamples(curve.degree, curve.knots, static_cast<int>(curve.count()), kCurveSteps);
    const std::vector<Color> colors =
        colorsOf(shape, weights, shape.selected ? kSelectedBodyWire : kCurveColor);
    for (std::size_t sample = 0; sample < samples.size(); ++sample) {
        Sum sum;
        for (std::size_t k = 0; k < samples[sample].values.size(); ++k) {
            const std::size_t point = samples[sample].first + k;
            addControl(sum, shape.world[point], weightOf(curve.weights, point), samples[sample].values[k],
                       colors[point]);
        }
        const auto index = static_cast<unsigned>(view.curves.vertices.size());
        view.curves.vertices.push_back(drawVertex(sum.point / sum.weight, sum.color));
        if (sample > 0)
            view.curves.indices.insert(view.curves.indices.end(), {index - 1, index});
    }
    return !samples.empty();
}

bool addSurface(SceneView& view, const ShapeView& shape, const std::optional<WeightMap>& weights)
{
    const auto& surface = static_cast<const host::SurfaceData&>(shape.geometry);
    const std::vector<BasisSample> u = basisSamples(surface.degreeU, surface.knotsU, surface.numU,
                                                    stepsPerSpan(surface.numU, surface.degreeU));
    const std::vector<BasisSample> v = basisSamples(surface.degreeV, surface.knotsV, surface.numV,
                                                    stepsPerSpan(surface.numV, surface.degreeV));
    if (u.empty() || v.empty() || shape.world.size() < static_cast<std::size_t>(surface.numU * surface.numV))
        return false;
    const SurfaceSampler sampler(surface, shape, weights);
    std::vector<DrawVertex> vertices;
    vertices.reserve(u.size() * v.size());
    for (const BasisSample& alongU : u) {
        for (const BasisSample& alongV : v)
            vertices.push_back(sampler.at(alongU, alongV));
    }
    addGrid(view, vertices, u, v, shape.selected ? kSelectedBodyWire : kIsoparmColor);
    return true;
}

} // namespace workbench
