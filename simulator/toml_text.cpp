// SPDX-License-Identifier: GPL-3.0-or-later
#define TOML_IMPLEMENTATION
#include "simulator/toml_text.h"
