/* SPDX-License-Identifier: Apache-2.0 */
/* empty.c: a shared object with as good as nothing in it, to compare loads with. */
__attribute__((visibility("default"))) int bench_empty(void);

int bench_empty(void) { return 0; }
