#pragma once

#include <maya/MIOStreamFwd.h>

#include <iostream>

// The names as they were before there was a namespace std.
using std::cerr;
using std::cin;
using std::clog;
using std::cout;
using std::endl;
using std::flush;
using std::ios;
using std::iostream;
using std::istream;
using std::ostream;
using std::streampos;
using std::ws;
