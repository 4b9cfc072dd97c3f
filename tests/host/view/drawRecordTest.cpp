// What plug-ins draw: the record of the overlay, and the trace of their calls.
#include "view/drawRecord.h"
#include "support/hostFixture.h"
#include "types/api.h"
#include "view/viewport.h"

#include <maya/MColor.h>
#include <maya/MFrameContext.h>
#include <maya/MPoint.h>
#include <maya/MString.h>
#include <maya/MUIDrawManager.h>

using namespace testing_support;
using MHWRender::MUIDrawManager;

namespace {

class DrawRecordTest : public HostTest {
public:
    template <class Draw>
    host::DrawRecord drawn(Draw&& draw)
    {
        host::DrawRecord record;
        host::Api::withDrawing(
            record, session.viewport(),
            [&](MUIDrawManager& manager, const MHWRender::MFrameContext&) { draw(manager); });
        return record;
    }
};

TEST_F(DrawRecordTest, CallsAreTracedAndRecordedWithTheStateOfTheirDrawable)
{
    const host::DrawRecord record = drawn([](MUIDrawManager& manager) {
        manager.beginDrawable(MUIDrawManager::kAutomatic, 0);
        manager.setColor(MColor(1, 0.1F, 0.25F, 1));
        manager.setFontSize(14);
        manager.setLineStyle(MUIDrawManager::kShortDashed);
        manager.text(MPoint(1.5, -2, 100000), MString("a \"b\"\tc"), MUIDrawManager::kCenter);
        manager.line2d(MPoint(3, 4), MPoint(50, 6.25));
        manager.endDrawable();
        manager.beginDrawable();
        manager.line(MPoint(0, 0, 0), MPoint(1, 1, 1));
        manager.endDrawable();
    });
    EXPECT_EQ(trace, (std::vector<std::string>{
                         "draw\tbeginDrawable selectable=2 name=0", "draw\tsetColor 1 0.1 0.25 1",
                         "draw\tsetFontSize 14", "draw\tsetLineStyle 2",
                         "draw\ttext 1.5 -2 100000 \"a \"b\"\\tc\" 1", "draw\tline2d 3 4 50 6.25",
                         "draw\tendDrawable", "draw\tbeginDrawable selectable=2 name=0",
                         "draw\tline 0 0 0 1 1 1", "draw\tendDrawable"}));
    EXPECT_EQ(record.drawables, 2);
    ASSERT_EQ(record.texts.size(), 1u);
    EXPECT_EQ(record.texts[0].text, "a \"b\"\tc");
    EXPECT_EQ(record.texts[0].fontSize, 14u);
    EXPECT_FLOAT_EQ(record.texts[0].color[1], 0.1F);
    EXPECT_FALSE(record.texts[0].screenSpace);
    ASSERT_EQ(record.lines.size(), 2u);
    EXPECT_EQ(record.lines[0].style, 2);
    EXPECT_TRUE(record.lines[0].screenSpace);
    EXPECT_EQ(record.lines[1].style, 0) << "the state ends with its drawable";
    EXPECT_FLOAT_EQ(record.lines[1].color[0], 0);
}

TEST_F(DrawRecordTest, NothingIsDrawnOutsideADrawable)
{
    const host::DrawRecord record = drawn([](MUIDrawManager& manager) {
        manager.line2d(MPoint(), MPoint(1, 1));
        manager.beginDrawable();
        manager.endDrawable();
        manager.text2d(MPoint(), MString("late"));
    });
    EXPECT_TRUE(record.texts.empty());
    EXPECT_TRUE(record.lines.empty());
    EXPECT_EQ(record.drawables, 1) << "an empty drawable still counts: it clears the overlay";
}

TEST_F(DrawRecordTest, TheFrameContextIsTheView)
{
    mel("setAttr persp.translate 0 0 10; setAttr persp.rotate 0 0 0");
    host::DrawRecord record;
    host::Api::withDrawing(
        record, session.viewport(), [](MUIDrawManager&, const MHWRender::MFrameContext& context) {
            int x = -1, y = -1, width = 0, height = 0;
            EXPECT_EQ(context.getViewportDimensions(x, y, width, height), MS::kSuccess);
            EXPECT_EQ(width * 1000 + height, 960540);
            double atX = 0, atY = 0;
            context.worldToViewport(MPoint(0, 0, 0), atX, atY);
            EXPECT_NEAR(atX, 480, 1e-9);
            EXPECT_NEAR(atY, 270, 1e-9);
            using Context = MHWRender::MFrameContext;
            const MMatrix view = context.getMatrix(Context::kViewMtx);
            EXPECT_NEAR((MPoint(0, 0, 0) * view).z, -10, 1e-12);
            EXPECT_NEAR(context.getMatrix(Context::kViewTransposeMtx).matrix[2][3], -10, 1e-12);
            EXPECT_NEAR(context.getMatrix(Context::kViewInverseMtx).matrix[3][2], 10, 1e-12);
            const MMatrix both = view * context.getMatrix(Context::kProjectionMtx);
            EXPECT_NEAR(both.matrix[2][2], context.getMatrix(Context::kViewProjMtx).matrix[2][2], 1e-12);
        });
}

} // namespace
