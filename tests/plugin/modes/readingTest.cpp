// What the press reads where nothing is stored, and what of the sparse arrays is made by a stroke.
#include "plugin/modes/modeScene.h"

#include "graph/graph.h"

using namespace testing_support;

namespace {

struct SparsePlace {
    const char* mode;
    double missing;        ///< what an element that is not there counts as
    bool rewritesElement0; ///< makes the deformer evaluate by writing the first element as it was
};

void PrintTo(const SparsePlace& place, std::ostream* out)
{
    *out << place.mode;
}

class SparseWeights : public ModeScene, public ::testing::WithParamInterface<SparsePlace> {};

INSTANTIATE_TEST_SUITE_P(Modes, SparseWeights,
                         ::testing::Values(SparsePlace{"default", 1, false}, SparsePlace{"plug", 1, true},
                                           SparsePlace{"dualQuaternion", 0, false},
                                           SparsePlace{"blendShapeTarget", 1, true},
                                           SparsePlace{"blendShapeBase", 1, true}));

TEST_P(SparseWeights, AreReadAsTheAttributesDefaultAndWrittenWhereTheyAreEdited)
{
    build(weightPlace(GetParam().mode));
    edit("-clampMin false");
    const host::Plug array = session.graph().plug(place.array);
    for (const std::uint32_t index : array.existingIndices())
        if (index != 8)
            array.element(index).unset();
    const double kept = array.element(8).number();
    mel("select sheet.vtx[6:8]");
    lookAt(kMiddle, 6);
    const Pixel from = at(kMiddle);
    press(from);
    drag({from.x + 11, from.y - 9});
    if (array.element(7).number() == GetParam().missing) // held at the clamp
        drag({from.x - 11, from.y + 9});
    const double offset = array.element(7).number() - GetParam().missing;
    ASSERT_NE(offset, 0);
    EXPECT_EQ(array.element(6).number(), array.element(7).number());
    EXPECT_NEAR(array.element(8).number(), std::max(kept + offset, place.unitClamp ? 0.0 : -1e9), 1e-6);
    const std::vector<std::uint32_t> made = array.existingIndices();
    EXPECT_EQ(made, GetParam().rewritesElement0 ? (std::vector<std::uint32_t>{0, 6, 7, 8})
                                                : (std::vector<std::uint32_t>{6, 7, 8}));
    EXPECT_EQ(array.element(0).number(), GetParam().missing);
    release({from.x + 11, from.y - 9});
}

} // namespace
