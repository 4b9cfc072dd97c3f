#pragma once

#include <ImathVec.h>

#include <string>
#include <vector>

namespace host {

/// What plug-ins drew through MUIDrawManager in the last event that drew: the overlay of the viewport. Each
/// event's drawing replaces the one before (an empty drawable clears it, a release always does).
struct DrawRecord {
    struct Text {
        Imath::V3d position; ///< world; pixels when screenSpace
        std::string text;
        int align = 0; ///< 0 left, 1 centre, 2 right
        float color[4] = {0, 0, 0, 1};
        unsigned fontSize = 12;
        bool screenSpace = false;
    };
    struct Line {
        Imath::V3d from, to; ///< world; pixels when screenSpace
        float color[4] = {0, 0, 0, 1};
        int style = 0;
        float width = 1;
        bool screenSpace = false;
    };
    /// What the next text or line is drawn with; reset where a drawable begins and ends. Outside a drawable
    /// nothing is recorded.
    struct Pen {
        bool open = false;
        float color[4] = {0, 0, 0, 1};
        unsigned fontSize = 12;
        int lineStyle = 0;
        float lineWidth = 1;
    };
    Pen pen;
    std::vector<Text> texts;
    std::vector<Line> lines;
    int drawables = 0; ///< beginDrawable calls since it was cleared
    void clear()
    {
        texts.clear();
        lines.clear();
        drawables = 0;
    }
};

} // namespace host
