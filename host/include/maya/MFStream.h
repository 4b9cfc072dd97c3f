#pragma once

#include <maya/MIOStream.h>

#include <fstream>

using std::filebuf;
using std::fstream;
using std::ifstream;
using std::ofstream;
