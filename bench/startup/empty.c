/* SPDX-License-Identifier: Apache-2.0 */
/* empty.c: what starting and ending a program of libc alone costs. */
int main(void) { return 0; }
