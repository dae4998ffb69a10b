// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef OXA_WORKBENCH_SERVE_COMMANDS_H
#define OXA_WORKBENCH_SERVE_COMMANDS_H

namespace CLI {
class App;
}

namespace workbench {

void AddServeCommand(CLI::App &app);

} // namespace workbench
#endif
