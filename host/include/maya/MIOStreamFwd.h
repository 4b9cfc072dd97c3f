#pragma once

#include <iosfwd>
