#pragma once

#include "session.h"

#include <cstddef>
#include <functional>
#include <string>

namespace bench {

/// A sheet whose vertices are all selected, and the tool.
struct Scene {
    std::string name;
    std::string deformer; ///< MEL that deforms `sheet`
    std::string flags;    ///< of the tool
    /// Gives the vertices their weights; the pressed one lies in the middle of the range, so that it can move
    /// both ways.
    std::function<void(host::Session& session, std::size_t pressed)> fill;
    std::string weights;  ///< of the vertices: an array, or rows
    std::string column;   ///< of a row, such as ".weights[1]"
    double change = 0.06; ///< of the pressed weight in the nearer of the two drags; the other goes `further`
    double further = 2.0; ///< times as far, the other way when negative
};

/// Strokes on a vertex of a sheet with all selected; each drag goes to the other of two places.
class Stroke {
public:
    Stroke(const Scene& scene, std::size_t columns, std::size_t lines);
    ~Stroke();
    Stroke(const Stroke&) = delete;
    Stroke& operator=(const Stroke&) = delete;

    void press();
    void drag();
    void release();
    void mel(const std::string& text);
    /// Both places of the drag give their own weight, again and again. While pressed.
    void requireMoves();
    double weight();

    host::Session session;

private:
    double dragged();
    void aim();

    std::string name;
    std::string probe;
    double change, further;
    int x = 0, y = 0;
    int reach = 0; ///< of the nearer drag, in pixels
    bool far = false;
    bool isDown = false;
};

} // namespace bench
