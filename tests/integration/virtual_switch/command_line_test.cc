// SPDX-License-Identifier: Apache-2.0
// What the program says without serving.
#include <fstream>

#include "virtual_switch_test.h"

namespace {

struct outcome {
    int status;
    std::string output;
    std::string errors;
};

outcome run(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), PM_VIRTUAL_SWITCH);
    child_process program(std::move(arguments));
    std::string output = program.read_rest(child_process::standard_output);
    std::string errors = program.read_rest(child_process::standard_error);
    return {program.wait(), output, errors};
}

using command_line = runtime_dir_test;

TEST_F(command_line, helps) {
    const outcome helped = run({"--help"});
    EXPECT_EQ(helped.status, 0);
    EXPECT_THAT(helped.output, testing::StartsWith("Usage: pm-virtual-switch"));
    EXPECT_EQ(helped.errors, "");
}

TEST_F(command_line, tells_its_version) {
    const outcome told = run({"--version"});
    EXPECT_EQ(told.status, 0);
    EXPECT_THAT(told.output, testing::MatchesRegex("pm-virtual-switch [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(command_line, checks_good_files) {
    const outcome checked = run({"--check", fixed_switch});
    EXPECT_EQ(checked.status, 0);
    EXPECT_EQ(checked.output, fixed_switch + ": good: fixed, 28 ports\n");
    EXPECT_EQ(checked.errors, "");
}

TEST_F(command_line, names_a_group_that_is_not_there) {
    for (const std::string group : {"no such group", "12x", "-1", "4294967295", "4294967296"}) {
        for (const std::vector<std::string> &arguments :
             {std::vector<std::string>{"--config-group", group, fixed_switch},
              {"--config-group=" + group, "--check", fixed_switch}}) {
            const outcome refused = run(arguments);
            EXPECT_EQ(refused.status, 1);
            EXPECT_EQ(refused.output, "");
            EXPECT_EQ(refused.errors, "pm-virtual-switch: no such group: " + group + "\n");
        }
    }
    EXPECT_FALSE(std::filesystem::exists(directory_.file("chassis-db")));
}

TEST_F(command_line, checks_with_a_group_and_shares_nothing) {
    for (const std::string group : {"root", "0", "62000"}) {
        EXPECT_EQ(run({"--check", "--config-group", group, fixed_switch}).status, 0) << group;
    }
    EXPECT_EQ(std::filesystem::status(directory_.file(".")).permissions(), std::filesystem::perms::owner_all);
}

TEST_F(command_line, refuses_bad_files) {
    const std::string file = directory_.file("bad.toml");
    std::ofstream(file) << "[chassis]\nname = 'x'\ntype = 6\nslots = 1\ncolour = 'red'\n";
    for (const std::vector<std::string> &arguments : {std::vector<std::string>{file}, {"--check", file}}) {
        const outcome refused = run(arguments);
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(refused.output, "");
        EXPECT_EQ(refused.errors, "pm-virtual-switch: " + file + ":5: chassis.colour: unknown key\n");
    }
}

TEST_F(command_line, refuses_a_directory_that_others_can_enter) {
    std::filesystem::permissions(directory_.file("."), std::filesystem::perms::all);
    const outcome refused = run({fixed_switch});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.errors, testing::MatchesRegex("pm-virtual-switch: .*\n"));
}

TEST_F(command_line, refuses_wrong_usage) {
    for (const std::vector<std::string> &arguments : {std::vector<std::string>{},
                                                      {"a", "b"},
                                                      {"--nothing"},
                                                      {"--check"},
                                                      {"-x", "a"},
                                                      {"--config-group"},
                                                      {"--config-group", "", "a"}}) {
        const outcome refused = run(arguments);
        EXPECT_EQ(refused.status, 2);
        EXPECT_EQ(refused.output, "");
        EXPECT_THAT(refused.errors, testing::MatchesRegex("pm-virtual-switch: usage: [^\n]*\n"));
    }
}

}  // namespace
