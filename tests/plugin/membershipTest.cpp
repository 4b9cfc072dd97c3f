// Deformers that keep their points in component tags (no set), and weight maps that a deformer names itself.
#include "graph/graph.h"
#include "support/toolFixture.h"
#include "support/weights.h"
#include "types/api.h"

#include <maya/MFnGeometryFilter.h>
#include <maya/MFnSingleIndexedComponent.h>

#include <cmath>

using namespace testing_support;

namespace {

constexpr int kVertices = 11 * 6;

class Membership : public ToolTest {
public:
    void SetUp() override
    {
        ToolTest::SetUp();
        mel("polyPlane -n sheet -w 10 -h 5 -sx 10 -sy 5; setAttr persp.rotate -type double3 -55 12 0");
    }

    std::vector<double> map(const std::string& plug)
    {
        std::vector<double> values;
        for (int vertex = 0; vertex < kVertices; ++vertex)
            values.push_back(melFloat("getAttr " + plug + "[" + std::to_string(vertex) + "]"));
        return values;
    }
    /// Where two maps differ, and by how much.
    static std::map<int, double> changes(const std::vector<double>& before, const std::vector<double>& after)
    {
        std::map<int, double> changed;
        for (std::size_t i = 0; i < before.size(); ++i)
            if (after[i] != before[i])
                changed[static_cast<int>(i)] = after[i] - before[i];
        return changed;
    }
};

TEST_F(Membership, ADeformerWithoutASetHasAllItsPoints)
{
    mel("cluster -n clu -useComponentTags 1 sheet");
    MStatus status;
    MFnGeometryFilter filter(host::Api::wrap(&session.graph().get("clu")));
    EXPECT_TRUE(filter.deformerSet(&status).isNull());
    EXPECT_EQ(status, MStatus::kFailure);
    MFnSingleIndexedComponent component(filter.getComponentAtIndex(0, &status));
    ASSERT_TRUE(status);
    EXPECT_EQ(component.elementCount(), kVertices);
}

TEST_F(Membership, TheToolSculptsADeformerWithoutASet)
{
    mel("cluster -n clu -useComponentTags 1 sheet; setAttr cluHandle.translateY 3; viewFit sheet; select "
        "-cl");
    edit("-deformer clu -weightMode default");
    toolOn();
    mel("select sheet.vtx[29] sheet.vtx[31]");
    const std::vector<double> before = map("clu.weightList[0].weights");
    stroke("sheet.vtx[29]", 0, 40);
    const std::map<int, double> changed = changes(before, map("clu.weightList[0].weights"));
    ASSERT_EQ(changed.size(), 2u);
    EXPECT_EQ(changed.count(29), 1u);
    EXPECT_EQ(changed.at(29), changed.at(31));
    mel("undo");
    EXPECT_EQ(map("clu.weightList[0].weights"), before);
}

TEST_F(Membership, TheToolSculptsTheSecondMapAndOnlyThat)
{
    mel("maskedOffset -n shift -o 0 3 0 sheet; viewFit sheet; select -cl");
    edit("-weightMode plug -deformer shift -plug mask");
    toolOn();
    mel("select sheet.vtx[29]");
    const std::vector<double> weights = map("shift.weightList[0].weights");
    const std::vector<double> before = map("shift.maskList[0].mask");
    stroke("sheet.vtx[29]", 0, 40);
    const std::map<int, double> changed = changes(before, map("shift.maskList[0].mask"));
    ASSERT_EQ(changed.size(), 1u);
    const double height = melFloats("pointPosition -l sheet.vtx[29]")[1];
    EXPECT_NEAR(height, 3 * (1 + changed.at(29)), 1e-6);
    EXPECT_EQ(map("shift.weightList[0].weights"), weights);
    mel("undo");
    EXPECT_EQ(map("shift.maskList[0].mask"), before);
}

TEST_F(Membership, WhatOnlyLooksLikeAMapIsRefusedAndTheOldNameStays)
{
    mel("maskedOffset -n shift -o 0 3 0 sheet");
    edit("-weightMode plug -deformer shift -plug mask");
    for (const char* other : {"strength", "levels", "plainMaskValues", "zones", "layerMask"}) {
        SCOPED_TRACE(other);
        testing::internal::CaptureStderr();
        editFails(std::string("-plug ") + other);
        testing::internal::GetCapturedStderr();
        EXPECT_EQ(query("plug").toString(), "mask");
    }
    edit("-plug weights"); // the deformer's usual map is one too
    EXPECT_EQ(query("plug").toString(), "weights");
}

} // namespace
