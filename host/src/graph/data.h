#pragma once

#include <ImathMatrix.h>
#include <ImathVec.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace host {

/// A value larger than a number that travels along connections: immutable and shared.
/// Geometry (nodes/geometry.h) derives from it too.
class Data {
public:
    virtual ~Data() = default;
    /// The type word of Maya ASCII and addAttr -dataType: "mesh", "componentList", "doubleArray", ...
    virtual const char* typeName() const = 0;
};
using DataRef = std::shared_ptr<const Data>;

struct IntArrayData final : Data {
    std::vector<int> values;
    const char* typeName() const override { return "Int32Array"; }
};
struct DoubleArrayData final : Data {
    std::vector<double> values;
    const char* typeName() const override { return "doubleArray"; }
};
struct StringArrayData final : Data {
    std::vector<std::string> values;
    const char* typeName() const override { return "stringArray"; }
};
/// x y z w per point.
struct PointArrayData final : Data {
    std::vector<std::array<double, 4>> values;
    const char* typeName() const override { return "pointArray"; }
};
struct VectorArrayData final : Data {
    std::vector<Imath::V3d> values;
    const char* typeName() const override { return "vectorArray"; }
};
/// Component texts as files write them: "vtx[0:7]", "cv[*][*]", "pt[0:1][0:2][*]".
struct ComponentListData final : Data {
    std::vector<std::string> components;
    const char* typeName() const override { return "componentList"; }
};
/// Words of a data type that the host does not interpret (for example "attributeAlias" is interpreted by the
/// node, "reflectanceRGB" is not): written back as they came.
struct OpaqueData final : Data {
    std::string type;
    std::string text;
    const char* typeName() const override { return type.c_str(); }
};

} // namespace host
