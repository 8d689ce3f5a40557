// SPDX-License-Identifier: Apache-2.0
// empty.cc: what starting and ending a program costs that needs the shared C++ library.
int main() { return 0; }
