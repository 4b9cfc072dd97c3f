// Several deformers on one shape in every order, and deformers on curves and surfaces.
#include "graph/graph.h"
#include "nodes/deformerBuild.h"
#include "nodes/geometry.h"
#include "nodes/geometryHistory.h"
#include "support/hostFixture.h"

#include <algorithm>
#include <cstdio>

namespace {

using Imath::V3d;
using Texts = std::vector<std::string>;

class Stack : public testing_support::HostTest {
public:
    host::Points points(const std::string& shape)
    {
        return host::shapeGeometry(session.graph().get(shape))->points();
    }
    /// The target is the shape as it stands with one point moved, so that its deltas are just that.
    void shapeTarget(const host::Points& now)
    {
        for (std::size_t i = 0; i < now.size(); ++i) {
            std::string place;
            for (int axis = 0; axis < 3; ++axis)
                place += " " + std::to_string(now[i][axis] + (i == 3 && axis == 1 ? 1.0 : 0.0));
            mel("xform -os -t" + place + " target.vtx[" + std::to_string(i) + "]");
        }
    }
};

/// What each deformer of the stack does to a point, by hand.
struct Layer {
    std::string type;
    std::string make;
    V3d (*apply)(std::size_t index, const V3d& point);
};

const Layer kLayers[] = {
    {"cluster",
     "cluster -n clu sheet; setAttr cluHandle.scalePivot -type double3 0 0 0;"
     "setAttr cluHandle.scaleX 2",
     [](std::size_t, const V3d& p) { return V3d(p.x * 2, p.y, p.z); }},
    {"blendShape", "blendShape -n face -w 0 0.5 target sheet",
     [](std::size_t index, const V3d& p) { return p + V3d(0, index == 3 ? 0.5 : 0, 0); }},
    {"skinCluster", "skinCluster -tsb -n skin hip sheet; setAttr hip.translateZ 3; setAttr hip.rotateZ 90",
     [](std::size_t, const V3d& p) { return V3d(-p.y, p.x, p.z + 3); }},
    {"softMod",
     "softMod -n soft -fc 0 0 0 -frd 1000 sheet; setAttr soft.falloffCurve[1].falloffCurve_FloatValue 1;"
     "setAttr softHandle.translateY -2",
     [](std::size_t, const V3d& p) { return p + V3d(0, -2, 0); }},
    {"ffd",
     "lattice -n cage -dv 2 2 2 sheet; setAttr cageLattice.scale -type double3 60 20 20;"
     "setAttr cageBase.scale -type double3 20 20 20",
     [](std::size_t, const V3d& p) { return V3d(p.x * 3, p.y, p.z); }},
};

TEST_F(Stack, FiveDeformersActInTheOrderInWhichTheyWereMade)
{
    std::vector<std::size_t> order{0, 1, 2, 3, 4};
    int step = 0;
    do {
        if (step++ % 7 != 0) // 18 of the 120 orders
            continue;
        mel("file -f -new; polyPlane -n sheet -w 1 -h 1 -sx 1 -sy 1; polyPlane -n target -w 1 -h 1 -sx 1 -sy "
            "1;"
            "select -cl; joint -n hip");
        host::Points expected = points("sheetShape");
        Texts types;
        for (const std::size_t layer : order) {
            const bool blend = kLayers[layer].type == "blendShape";
            if (blend)
                shapeTarget(points("sheetShape"));
            mel(kLayers[layer].make);
            if (blend)
                mel("delete target");
            types.insert(types.begin(), kLayers[layer].type);
            for (std::size_t i = 0; i < expected.size(); ++i)
                expected[i] = kLayers[layer].apply(i, expected[i]);
            const host::Points now = points("sheetShape");
            for (std::size_t i = 0; i < expected.size(); ++i)
                ASSERT_LE((now[i] - expected[i]).length(), 1e-9 * (1.0 + expected[i].length()))
                    << kLayers[layer].type << " after " << types.size() << " point " << i << now[i]
                    << expected[i];
        }
        Texts found;
        for (host::Node* node : host::deformersOf(*session.graph().get("sheetShape").asDag()))
            if (node->type().name != "tweak")
                found.push_back(node->type().name);
        EXPECT_EQ(found, types);
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(Stack, ASavedStackOpensWithTheSamePoints)
{
    mel("polyPlane -n sheet -w 1 -h 1 -sx 2 -sy 2; polyPlane -n target -w 1 -h 1 -sx 2 -sy 2;"
        "move -r 0 1 0 target.vtx[3]; select -cl; joint -n hip; blendShape -w 0 0.5 target sheet; delete "
        "target;"
        "softMod -frd 1 -n soft sheet; setAttr softHandle.translateX 2; lattice -n cage -dv 3 2 2 -oc 1 "
        "sheet;"
        "move -r 0 1 0 cageLattice.pt[1][1][0]; select cageLattice.pt[2][0:1][0:1]; cluster -n clu;"
        "setAttr cluHandle.translateZ 1; skinCluster -tsb -n skin hip sheet; setAttr hip.rotateX 30;"
        "maskedOffset -n shift -o 0 0 1 sheet; setAttr shift.maskList[0].mask[2] 0.5");
    const host::Points before = points("sheetShape");
    const std::string path = ::testing::TempDir() + "stackTest.ma";
    mel("file -rename \"" + path + "\"; file -save -type mayaAscii; file -f -new; file -f -open \"" + path +
        "\"");
    const host::Points after = points("sheetShape");
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_LE((after[i] - before[i]).length(), 1e-9 * (1.0 + before[i].length()))
            << i << after[i] << before[i];
    std::remove(path.c_str());
}

TEST_F(Stack, ALatticeIsBoundToJointsAndCarriesItsMesh)
{
    mel("polyCube -n box -w 2 -h 2 -d 2; lattice -n cage -dv 2 2 2 -oc 1 box;"
        "select -cl; joint -n hip; skinCluster -tsb -n skin hip cageLattice");
    const host::Points before = points("boxShape");
    mel("setAttr hip.rotateZ 90; setAttr hip.translateX 3");
    const host::Points after = points("boxShape");
    for (std::size_t i = 0; i < before.size(); ++i) {
        const V3d expected(3 - before[i].y, before[i].x, before[i].z);
        EXPECT_LE((after[i] - expected).length(), 1e-9 * expected.length()) << i << after[i];
    }
}

TEST_F(Stack, CurvesAndSurfacesAreBoundByClusterAndSkin)
{
    mel("curve -n rail -d 3 -p 0 0 0 -p 1 0 0 -p 2 0 0 -p 3 0 0 -p 4 0 0; nurbsPlane -n cloth;"
        "select rail.cv[1:2] cloth.cv[0][1:3]; cluster -n clu;"
        "select -cl; joint -n hip; skinCluster -tsb -n railSkin hip rail; skinCluster -tsb -n clothSkin hip "
        "cloth");
    const host::Points rail = points("railShape"), cloth = points("clothShape");
    mel("setAttr cluHandle.translateY 1; setAttr hip.translateZ 2; percent -v 0.5 clu rail.cv[2] "
        "cloth.cv[0][3]");
    const host::Points railNow = points("railShape"), clothNow = points("clothShape");
    for (std::size_t i = 0; i < rail.size(); ++i) {
        const V3d expected = rail[i] + V3d(0, i == 1 ? 1 : i == 2 ? 0.5 : 0, 2);
        EXPECT_LE((railNow[i] - expected).length(), 1e-9) << i << railNow[i];
    }
    for (std::size_t i = 0; i < cloth.size(); ++i) {
        const V3d expected = cloth[i] + V3d(0, i == 1 || i == 2 ? 1 : i == 3 ? 0.5 : 0, 2);
        EXPECT_LE((clothNow[i] - expected).length(), 1e-9) << i << clothNow[i];
    }
}

} // namespace
