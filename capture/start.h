/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief The beginning of a capture: which library on which machine.
 */
#ifndef OXA_CAPTURE_START_H
#define OXA_CAPTURE_START_H

namespace oxa::capture {

// Into the file, which is new: its header, then version, path and code of the library, and the process.
void TellStart(const void *pvWithinLibrary);

} // namespace oxa::capture
#endif
