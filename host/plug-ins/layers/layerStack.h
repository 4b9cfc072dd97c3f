#pragma once

#include <map>
#include <string>
#include <vector>

namespace layers {

/// No layer: the parent of a layer on the top level.
constexpr int kTopLevel = -1;

/// One layer. Per-vertex arrays hold one value per vertex of the whole shape, in vertex order; an empty one
/// was never painted.
struct Layer {
    int id = 0;
    std::string name; ///< UTF-8; need not be unique
    int parent = kTopLevel;
    double opacity = 1.0;
    std::vector<double> mask;
    std::vector<double> dualQuaternion;
    std::map<int, std::vector<double>> influences; ///< by logical index
};

/// The layers of one shape, the lowest first. Ids are never used twice. All members that take an id throw
/// std::runtime_error when there is no such layer.
class LayerStack {
public:
    const std::vector<Layer>& all() const { return layers; }
    Layer& get(int id);
    const Layer& get(int id) const;
    std::vector<const Layer*> childrenOf(int id) const;

    int add(const std::string& name, int parent);
    /// Refuses a parent that is the layer itself or lies below it.
    void setParent(int id, int parent);
    /// Its children move up to its parent.
    void remove(int id);

private:
    void requireParent(int parent) const;

    std::vector<Layer> layers;
    int lastId = 0;
};

} // namespace layers
