// SPDX-License-Identifier: Apache-2.0
//
// Opens a profile's list of sensors (profiles/<profile>.def).  A list is included by whoever needs something
// of it, after he has defined what that is: ROW, GENERATE_..., or one of the lines themselves.  What he has not
// defined says nothing.  list_end.h closes the list and forgets all definitions.
//
// The lines of a list; kind is what the sensor looks like, function the exported generator, name the pattern of
// its name, and what may follow is how it departs (make_row.h):
//
//     STATIC_TABLE(kind, function, name, ...)        of the profile's static table
//     RACK_TABLE(kind, function, name, ...)          of the table of the rack management board
//     CDU_TABLE(kind, function, name, ...)           of the table of the liquid-cooling unit
//     SINGLE(group, kind, function, name, ...)       one record, in no table
//     INDEXED(group, kind, function, name, ...)      one record per index, which is the first argument
//     INDEX_LAST(group, kind, function, name, ...)   the same, but the index is the last argument
//     LABELLED(group, kind, function, name, ...)     built by the driver; function only stands in log lines
//     DRIVER(group, kind, name, ...)                 built by the driver under its own name

#ifndef ROW
#define ROW(group, kind, function, ...)
#endif
#ifndef GENERATE_STATIC
#define GENERATE_STATIC(function)
#endif
#ifndef GENERATE_INDEXED
#define GENERATE_INDEXED(function)
#endif
#ifndef GENERATE_INDEX_LAST
#define GENERATE_INDEX_LAST(function)
#endif

#ifndef STATIC_TABLE
#define STATIC_TABLE(kind, function, ...) GENERATE_STATIC(function) ROW(kTable, kind, #function, __VA_ARGS__)
#endif
#ifndef RACK_TABLE
#define RACK_TABLE(kind, function, ...)                                                                      \
    GENERATE_STATIC(function) ROW(kRackTable, kind, #function, __VA_ARGS__)
#endif
#ifndef CDU_TABLE
#define CDU_TABLE(kind, function, ...) GENERATE_STATIC(function) ROW(kCduTable, kind, #function, __VA_ARGS__)
#endif
#ifndef SINGLE
#define SINGLE(group, kind, function, ...) GENERATE_STATIC(function) ROW(group, kind, #function, __VA_ARGS__)
#endif
#ifndef INDEXED
#define INDEXED(group, kind, function, ...)                                                                  \
    GENERATE_INDEXED(function) ROW(group, kind, #function, __VA_ARGS__)
#endif
#ifndef INDEX_LAST
#define INDEX_LAST(group, kind, function, ...)                                                               \
    GENERATE_INDEX_LAST(function) ROW(group, kind, #function, __VA_ARGS__)
#endif
#ifndef LABELLED
#define LABELLED(group, kind, function, ...) ROW(group, kind, #function, __VA_ARGS__)
#endif
#ifndef DRIVER
#define DRIVER(group, kind, ...) ROW(group, kind, "", __VA_ARGS__)
#endif
