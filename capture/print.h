/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief What a format makes of its arguments.
 */
#ifndef OXA_CAPTURE_PRINT_H
#define OXA_CAPTURE_PRINT_H

#include <stdarg.h>
#include <stddef.h>

namespace oxa::capture {

// Its length, as vsnprintf() gives it, from which it differs in nothing but time: a pass prints thousands of texts, nearly all
// of them with %s, %d, %u and %x.  errno stays as it is.
int Print(char *pcTo, size_t nRoom, const char *pcFormat, va_list tList);

} // namespace oxa::capture
#endif
