// SPDX-License-Identifier: Apache-2.0
//
// Closes a profile's list of sensors.
#undef ROW
#undef GENERATE_STATIC
#undef GENERATE_INDEXED
#undef GENERATE_INDEX_LAST
#undef STATIC_TABLE
#undef RACK_TABLE
#undef CDU_TABLE
#undef SINGLE
#undef INDEXED
#undef INDEX_LAST
#undef LABELLED
#undef DRIVER
