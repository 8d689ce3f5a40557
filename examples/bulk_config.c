/* SPDX-License-Identifier: Apache-2.0 */
/* Configures many interfaces at once, from the lines of a file or of standard input:
 *     bulk_config [FILE]
 * A line is an interface or a range of its last number, an attribute, and the attribute's value:
 *     fc1/1-4 speed 8000
 *     port-channel5 description to the array
 * Nothing is sent unless all lines are good. Lines that give an attribute the same value travel in one request, unless
 * one between them gives it another. Exit status: 0 when every change was made, 1 when one was not, 2 when a line is
 * wrong. */
#include <arpa/inet.h>
#include <ctype.h>
#include <errno.h>
#include <platform/if_index.h>
#include <platform_dev/if_index_dev.h>
#include <platform_dev/mts_dev.h>
#include <port_mgr/port_mgr_common.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { MOST_RANGES = 64, LONGEST_LINE = 512 };

/* How a value is written and, since it is handed over as it lies in memory, how wide it is. */
enum kind { ON_OFF, SHORT, WORD, TEXT };

static const struct attribute {
    const char *name;
    uint8_t type;
    enum kind kind;
    uint8_t on, off;
} attributes[] = {
    {"shutdown", PM_ATTR_ADMIN_STATE, ON_OFF, 2, 1}, /* shut down: the admin state is not up */
    {"beacon", PM_ATTR_BEACON_MODE, ON_OFF, 1, 2},
    {"description", PM_ATTR_DESCRIPTION, TEXT, 0, 0},
    {"speed", PM_ATTR_SPEED, WORD, 0, 0},
    {"mtu", PM_ATTR_MTU, WORD, 0, 0},
    {"bandwidth", PM_ATTR_BANDWIDTH, WORD, 0, 0},
    {"vsan", PM_ATTR_PORT_VSAN, SHORT, 0, 0},
};

static const uint8_t widths[] = {[ON_OFF] = 1, [SHORT] = 2, [WORD] = 4, [TEXT] = PM_CFG_VALUE_SIZE};

/* One request: an attribute and its value for ranges of interfaces of one type, which one service owns. */
struct change {
    const struct attribute *attribute;
    union {
        uint8_t byte;
        uint16_t number;
        uint32_t word;
        char text[PM_CFG_VALUE_SIZE];
    } value;
    uint8_t type;
    uint32_t service;
    uint32_t range_count;
    pm_if_index_range_t ranges[MOST_RANGES];
};

struct change_list {
    size_t count;
    struct change *changes;
};

/* Words */

static const struct {
    uint32_t status;
    const char *words;
} known_statuses[] = {
    {1, "out of memory, or not permitted"},
    {PM_ERR_FAILURE, "missing or invalid arguments"},
    {PM_ERR_INVALID_PARAM, "invalid parameter, or malformed answer"},
    {PM_ERR_TLV, "attribute that cannot be encoded"},
    {PM_ERR_NO_PAYLOAD, "answer without payload"},
    {PM_ERR_REJECTED, "request rejected"},
    {PM_ERR_INVALID_RANGE, "no such interface or range"},
};

/* Small numbers are the transport's: system error numbers. */
static bool is_transport_failure(uint32_t status) { return status != 0 && status < 4096; }

static const char *status_words(uint32_t status) {
    for (size_t i = 0; i < sizeof known_statuses / sizeof known_statuses[0]; ++i)
        if (known_statuses[i].status == status) return known_statuses[i].words;
    return is_transport_failure(status) ? strerror((int)status) : "failure of the service's own";
}

static void print_refusal(const struct change *change, if_index_t first, if_index_t last, uint32_t status) {
    char name[256];
    sprintf_if_index(name, first);
    fprintf(stderr, "%s", name);
    if (last != first) {
        sprintf_if_index(name, last);
        fprintf(stderr, " to %s", name);
    }
    fprintf(stderr, ": %s: %s (0x%x)\n", change->attribute->name, status_words(status), status);
}

/* Reading lines */

/* Reads "fc1/4" or "fc1/1-4". A name may hold a dash itself, so that it is tried as a whole first. */
static bool read_range(const char *text, pm_if_index_range_t *range) {
    if_index_t first;
    if_index_t last;
    char name[LONGEST_LINE];
    const char *dash = strrchr(text, '-');

    if (if_index_from_name(text, &first) == 0) {
        *range = (pm_if_index_range_t){first, first};
        return true;
    }
    if (dash == NULL) return false;
    size_t length = (size_t)(dash - text);
    snprintf(name, sizeof name, "%.*s", (int)length, text);
    if (if_index_from_name(name, &first) != 0) return false;
    while (length > 0 && isdigit((unsigned char)name[length - 1])) --length;
    snprintf(name + length, sizeof name - length, "%s", dash + 1);
    if (if_index_from_name(name, &last) != 0) return false;
    *range = (pm_if_index_range_t){first, last};
    return true;
}

static bool read_number(const char *text, unsigned long most, uint32_t *number) {
    char *end;
    errno = 0;
    const unsigned long value = strtoul(text, &end, 10);
    *number = (uint32_t)value;
    return isdigit((unsigned char)*text) && *end == '\0' && errno == 0 && value <= most;
}

/* `change` is zeroed, so that equal values are equal bytes. */
static bool read_value(const char *text, struct change *change) {
    const struct attribute *attribute = change->attribute;
    uint32_t number = 0;
    switch (attribute->kind) {
        case ON_OFF:
            change->value.byte = strcmp(text, "on") == 0 ? attribute->on : attribute->off;
            return strcmp(text, "on") == 0 || strcmp(text, "off") == 0;
        case SHORT:
            if (!read_number(text, UINT16_MAX, &number)) return false;
            change->value.number = (uint16_t)number;
            return true;
        case WORD:
            return read_number(text, UINT32_MAX, &change->value.word);
        case TEXT:
            if (strlen(text) >= sizeof change->value.text) return false;
            strcpy(change->value.text, text);
            return true;
    }
    return false;
}

/* Returns what is wrong with a line, or null. */
static const char *read_change(char *line, struct change *change) {
    char *rest;
    const char *range = strtok_r(line, " \t", &rest);
    const char *name = strtok_r(NULL, " \t", &rest);
    const char *value = rest != NULL ? rest + strspn(rest, " \t") : "";

    if (name == NULL) return "not INTERFACES ATTRIBUTE VALUE";
    if (!read_range(range, &change->ranges[0])) return "not an interface or a range of interfaces";
    for (size_t i = 0; i < sizeof attributes / sizeof attributes[0]; ++i)
        if (strcmp(attributes[i].name, name) == 0) change->attribute = &attributes[i];
    if (change->attribute == NULL) return "not an attribute";
    if (!read_value(value, change)) return "not a value of this attribute";
    if (if_index_get_type(change->ranges[0].first, &change->type) != 0) return "not a type of interfaces";
    change->service = pm_get_mts_sap(change->ranges[0].first);
    change->range_count = 1;
    return NULL;
}

/* Where a request goes depends on its first interface, so only interfaces that are like it may join. */
static bool is_like(const struct change *one, const struct change *other) {
    return one->attribute == other->attribute && one->type == other->type && one->service == other->service;
}

static bool join(struct change_list *list, const struct change *change) {
    size_t i = list->count;
    while (i > 0 && !is_like(&list->changes[i - 1], change)) --i;
    if (i == 0) return false;
    struct change *earlier = &list->changes[i - 1];
    if (earlier->range_count == MOST_RANGES || memcmp(&earlier->value, &change->value, sizeof change->value) != 0)
        return false;
    earlier->ranges[earlier->range_count++] = change->ranges[0];
    return true;
}

static bool add(struct change_list *list, const struct change *change) {
    if (join(list, change)) return true;
    struct change *more = realloc(list->changes, (list->count + 1) * sizeof *more);
    if (more == NULL) return false;
    list->changes = more;
    list->changes[list->count++] = *change;
    return true;
}

/* Adds what a line says, unless it says nothing. Returns what is wrong with it, or null. */
static const char *read_line(char *line, struct change_list *list) {
    struct change change = {0};
    line += strspn(line, " \t");
    if (*line == '\0' || *line == '#') return NULL;
    const char *mistake = read_change(line, &change);
    if (mistake == NULL && !add(list, &change)) mistake = strerror(ENOMEM);
    return mistake;
}

/* Returns whether all lines are good. */
static bool read_changes(FILE *file, const char *file_name, struct change_list *list) {
    char line[LONGEST_LINE];
    bool is_good = true;
    for (unsigned number = 1; fgets(line, sizeof line, file) != NULL; ++number) {
        const size_t length = strcspn(line, "\n");
        const bool is_whole = line[length] == '\n' || feof(file);
        line[length] = '\0';
        const char *mistake = is_whole ? read_line(line, list) : "too long";
        if (mistake != NULL) fprintf(stderr, "bulk_config: %s:%u: %s\n", file_name, number, mistake);
        is_good = is_good && mistake == NULL;
        if (!is_whole) return false;
    }
    if (ferror(file)) fprintf(stderr, "bulk_config: %s: %s\n", file_name, strerror(errno));
    return is_good && !ferror(file);
}

/* Sending */

/* For answers about the request as a whole. */
static void print_refusals(const struct change *change, uint32_t status) {
    for (uint32_t i = 0; i < change->range_count; ++i)
        print_refusal(change, change->ranges[i].first, change->ranges[i].last, status);
}

/* Says which interfaces refused a change, and returns whether none did. */
static bool are_good(const struct change *change, uint32_t count, const pm_set_port_result_t *entries) {
    bool is_good = true;
    for (uint32_t i = 0; i < count; ++i) {
        if (entries[i].status == 0) continue;
        print_refusal(change, entries[i].if_index, entries[i].if_index, ntohl(entries[i].status));
        is_good = false;
    }
    return is_good;
}

/* Returns whether every interface took the change. */
static bool send_change(mts_handle_t handle, const struct change *change) {
    uint32_t count = 0;
    pm_set_port_result_t *entries = NULL;
    uint32_t status = pm_cmi_set_port_config(handle, getenv("USER"), "bulk_config", change->range_count, change->ranges,
                                             change->attribute->type, widths[change->attribute->kind], &change->value,
                                             &count, &entries, 0);
    if (is_transport_failure(status)) entries = NULL;             /* they are nobody's then */
    if (status == 0 && entries == NULL) status = PM_ERR_REJECTED; /* no service was asked: these do not take it */
    if (entries == NULL) count = 0;
    if (status != 0 && count == 0) print_refusals(change, status);
    const bool is_made = are_good(change, count, entries) && status == 0;
    free(entries);
    return is_made;
}

static bool send_changes(const struct change_list *list) {
    const mts_handle_t handle = mts_dev_open();
    if (handle == 0) {
        perror("bulk_config: mts_dev_open");
        return false;
    }
    bool is_done = true;
    for (size_t i = 0; i < list->count; ++i) is_done = send_change(handle, &list->changes[i]) && is_done;
    mts_dev_close(handle);
    return is_done;
}

int main(int argc, char **argv) {
    if (argc > 2) {
        fprintf(stderr, "usage: bulk_config [FILE]\n");
        return 2;
    }
    const char *name = argc == 2 ? argv[1] : "standard input";
    FILE *file = argc == 2 ? fopen(name, "re") : stdin;
    if (file == NULL) {
        fprintf(stderr, "bulk_config: %s: %s\n", name, strerror(errno));
        return 2;
    }
    struct change_list list = {0};
    int status = 2;
    if (read_changes(file, name, &list)) status = send_changes(&list) ? 0 : 1;
    free(list.changes);
    fclose(file);
    return status;
}
