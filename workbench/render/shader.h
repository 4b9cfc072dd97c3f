#pragma once

#include <ImathMatrix.h>

#include <string>

namespace workbench {

/// A linked vertex and fragment program, with a geometry stage if one is given. Throws host::Error with the
/// driver's text when it does not compile.
class Shader {
public:
    Shader(const char* vertexSource, const char* fragmentSource, const char* geometrySource = nullptr);
    ~Shader();
    Shader(const Shader&) = delete;
    Shader& operator=(const Shader&) = delete;

    void use() const;
    /// A matrix for row vectors; what it does to a vertex is vertex * matrix.
    void set(const char* uniform, const Imath::M44d& matrix) const;
    void set(const char* uniform, float value) const;
    void set(const char* uniform, float x, float y) const;

private:
    unsigned program = 0;
};

/// One vertex of what is drawn: every array of the scene painter has this layout.
struct DrawVertex {
    float position[3]; ///< world
    float normal[3];   ///< world; zero where there is no surface
    float color[4];
    float size; ///< of a point, pixels
};

/// Vertices (and indices) on the graphics side, for one drawing.
class VertexBuffer {
public:
    VertexBuffer(const DrawVertex* vertices, std::size_t count, const unsigned* indices,
                 std::size_t indexCount);
    ~VertexBuffer();
    VertexBuffer(const VertexBuffer&) = delete;
    VertexBuffer& operator=(const VertexBuffer&) = delete;

    void drawTriangles() const; ///< by the indices
    void drawLines() const;     ///< by the indices
    void drawPoints() const;    ///< all vertices

private:
    unsigned arrays = 0, buffers[2] = {0, 0};
    std::size_t vertexCount, indexCount;
};

} // namespace workbench
