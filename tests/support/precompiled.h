// SPDX-License-Identifier: GPL-3.0-or-later
//
// The big headers of the tests, read once for all programs.  Tests include what they use all the same.
#ifndef OXA_TESTS_SUPPORT_PRECOMPILED_H
#define OXA_TESTS_SUPPORT_PRECOMPILED_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "simulator/simulator.h"

#endif
