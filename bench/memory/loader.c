/* SPDX-License-Identifier: Apache-2.0 */
/* loader.c: a program in C, so that nothing but libc is there before what it loads.
 *
 *   loader time LIBRARY [BEFORE...]   ns that loading and closing LIBRARY takes, with the others loaded before
 *   loader resident [LIBRARY...]      what the kernel says about the memory of a process that has loaded these
 *
 * The load is the first of this library in its process, as it is for a program: page faults, relocations and look-ups
 * of names count. A second one would find libstdc++ still there, since nothing can unload it. */
#include <dlfcn.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

static void *load(const char *library) {
    void *const handle = dlopen(library, RTLD_NOW);
    if (handle != NULL) return handle;
    fprintf(stderr, "loader: %s\n", dlerror());
    exit(EXIT_FAILURE);
}

static double now(void) {
    struct timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    return (double)time.tv_sec * 1e9 + (double)time.tv_nsec;
}

static void print_load_time(const char *library) {
    const double start = now();
    dlclose(load(library));
    printf("%.0f\n", now() - start);
}

static void print_memory(void) {
    static char text[4096];
    const int file = open("/proc/self/smaps_rollup", O_RDONLY | O_CLOEXEC);
    const ssize_t size = read(file, text, sizeof text);
    if (size <= 0 || write(STDOUT_FILENO, text, (size_t)size) != size) exit(EXIT_FAILURE);
}

int main(int argc, char **argv) {
    const int is_time = argc > 2 && strcmp(argv[1], "time") == 0;
    for (int i = is_time ? 3 : 2; i < argc; ++i) load(argv[i]);
    if (is_time)
        print_load_time(argv[2]);
    else
        print_memory();
    return EXIT_SUCCESS;
}
