#pragma once

// The core functions of OpenGL, linked directly.
#define GL_GLEXT_PROTOTYPES
#include <GL/glcorearb.h>
