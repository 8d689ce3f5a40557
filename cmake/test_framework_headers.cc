// SPDX-License-Identifier: Apache-2.0
// test_framework_headers.cc: an empty source, whose precompiled headers the test programs share.
