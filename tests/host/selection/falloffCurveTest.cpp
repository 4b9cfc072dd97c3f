// The falloff curve of soft selection and its text.
#include "selection/falloffCurve.h"

#include "types/error.h"

#include <gtest/gtest.h>

using host::FalloffCurve;
using host::parseFalloffCurve;

namespace {

TEST(FalloffCurve, EveryKindOfInterpolationFollowsItsFormula)
{
    const struct {
        const char* curve;
        double at, expected;
    } rows[] = {
        {"1,0,2,0,1,2", 0.25, 0.84375}, // smooth: 1 - (3/16 - 2/64)
        {"1,0,2,0,1,2", 0.5, 0.5},
        {"1,0,1,0,1,1", 0.3, 0.7},             // linear
        {"1,0,0,0.25,0.5,0,0,1,0", 0.49, 1.0}, // none: steps
        {"1,0,0,0.25,0.5,0,0,1,0", 0.5, 0.25},
        {"0,1,1,1,0,1", 0.25, 0.75},              // points in any order
        {"0.5,0.2,1,0.1,0.6,1", 0.0, 0.5},        // before the first point
        {"0.5,0.2,1,0.1,0.6,1", 0.9, 0.1},        // after the last
        {"1,0,3,0.5,0.5,3,0,1,3", 0.25, 0.78125}, // spline: Catmull-Rom by hand
        {"0,0,3,1,0.5,3,1,1,3", 0.75, 1.0},       // spline overshoot is kept within 1
        {"1,0,1,0.5,0.5,0,0,1,1", 0.25, 0.75},    // the left point's kind holds
        {"1,0,1,0.5,0.5,0,0,1,1", 0.75, 0.5},
    };
    for (const auto& row : rows)
        EXPECT_NEAR(FalloffCurve(parseFalloffCurve(row.curve)).at(row.at), row.expected, 1e-7)
            << row.curve << " at " << row.at;
}

TEST(FalloffCurve, TextsRoundTripAndBadOnesAreRefusedByName)
{
    for (const char* text : {"1,0,2,0,1,2", "0.5,0.25,3,1,0.75,0"})
        EXPECT_EQ(host::falloffCurveText(parseFalloffCurve(text)), text);
    for (const char* text :
         {"", "1,0", "1,0,2,0", "1,0,7", "1,2,0", "-1,0,1", "a,b,c", "1,0,2,", "nan,0,1"}) {
        try {
            parseFalloffCurve(text);
            ADD_FAILURE() << "accepted: " << text;
        } catch (const host::Error& error) {
            EXPECT_NE(std::string(error.what()).find("\"" + std::string(text) + "\""), std::string::npos);
        }
    }
}

} // namespace
