#include "render/shader.h"

#include "render/gl.h"
#include "types/error.h"

#include <cstddef>
#include <utility>

namespace workbench {

namespace {

unsigned compiled(GLenum kind, const char* source)
{
    const unsigned shader = glCreateShader(kind);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    GLint good = 0;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &good);
    if (good)
        return shader;
    char log[1024] = {};
    glGetShaderInfoLog(shader, sizeof log, nullptr, log);
    glDeleteShader(shader);
    throw host::Error(std::string("Cannot draw a picture: a shader does not compile: ") + log);
}

} // namespace

Shader::Shader(const char* vertexSource, const char* fragmentSource, const char* geometrySource)
{
    const std::pair<GLenum, const char*> stages[] = {{GL_VERTEX_SHADER, vertexSource},
                                                     {GL_FRAGMENT_SHADER, fragmentSource},
                                                     {GL_GEOMETRY_SHADER, geometrySource}};
    program = glCreateProgram();
    try {
        for (const auto& [kind, source] : stages) {
            if (!source)
                continue;
            const unsigned stage = compiled(kind, source);
            glAttachShader(program, stage);
            glDeleteShader(stage); // goes with the program
        }
        GLint good = 0;
        glLinkProgram(program);
        glGetProgramiv(program, GL_LINK_STATUS, &good);
        if (!good)
            throw host::Error("Cannot draw a picture: a shader does not link.");
    } catch (...) {
        glDeleteProgram(program);
        throw;
    }
}

Shader::~Shader()
{
    glDeleteProgram(program);
}

void Shader::use() const
{
    glUseProgram(program);
}

void Shader::set(const char* uniform, const Imath::M44d& matrix) const
{
    // Row vectors stored by rows are column vectors stored by columns.
    GLfloat cells[16];
    for (int cell = 0; cell < 16; ++cell)
        cells[cell] = static_cast<GLfloat>(matrix[cell / 4][cell % 4]);
    glUniformMatrix4fv(glGetUniformLocation(program, uniform), 1, GL_FALSE, cells);
}

void Shader::set(const char* uniform, float value) const
{
    glUniform1f(glGetUniformLocation(program, uniform), value);
}

void Shader::set(const char* uniform, float x, float y) const
{
    glUniform2f(glGetUniformLocation(program, uniform), x, y);
}

VertexBuffer::VertexBuffer(const DrawVertex* vertices, std::size_t count, const unsigned* indices,
                           std::size_t indicesCount)
    : vertexCount(count), indexCount(indicesCount)
{
    const auto bytes = [](std::size_t size) { return static_cast<GLsizeiptr>(size); };
    glGenVertexArrays(1, &arrays);
    glBindVertexArray(arrays);
    glGenBuffers(2, buffers);
    glBindBuffer(GL_ARRAY_BUFFER, buffers[0]);
    glBufferData(GL_ARRAY_BUFFER, bytes(count * sizeof(DrawVertex)), vertices, GL_STATIC_DRAW);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, buffers[1]);
    glBufferData(GL_ELEMENT_ARRAY_BUFFER, bytes(indexCount * sizeof(unsigned)), indices, GL_STATIC_DRAW);
    const struct {
        GLint size;
        std::size_t offset;
    } fields[] = {{3, offsetof(DrawVertex, position)},
                  {3, offsetof(DrawVertex, normal)},
                  {4, offsetof(DrawVertex, color)},
                  {1, offsetof(DrawVertex, size)}};
    for (unsigned field = 0; field < 4; ++field) {
        glEnableVertexAttribArray(field);
        glVertexAttribPointer(field, fields[field].size, GL_FLOAT, GL_FALSE, sizeof(DrawVertex),
                              reinterpret_cast<const void*>(fields[field].offset));
    }
}

VertexBuffer::~VertexBuffer()
{
    glDeleteBuffers(2, buffers);
    glDeleteVertexArrays(1, &arrays);
}

void VertexBuffer::drawTriangles() const
{
    glBindVertexArray(arrays);
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(indexCount), GL_UNSIGNED_INT, nullptr);
}

void VertexBuffer::drawLines() const
{
    glBindVertexArray(arrays);
    glDrawElements(GL_LINES, static_cast<GLsizei>(indexCount), GL_UNSIGNED_INT, nullptr);
}

void VertexBuffer::drawPoints() const
{
    glBindVertexArray(arrays);
    glDrawArrays(GL_POINTS, 0, static_cast<GLsizei>(vertexCount));
}

} // namespace workbench
