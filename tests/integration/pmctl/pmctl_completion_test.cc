// SPDX-License-Identifier: Apache-2.0
// The completion script in bash, with the built client and the running virtual switch.
#include <fmt/core.h>
#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <fstream>

#include "integration/pmctl/pmctl_runs.h"
#include "integration/virtual_switch/virtual_switch_test.h"

namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

using strings = std::vector<std::string>;

// What bash is told for a line of these words, parted as bash parts them, of which `current` is to be completed: it is
// the last word or a part of it.
strings completed(const strings &words, const std::string &current) {
    std::string array = PMCTL;
    for (const std::string &word : words) array += " '" + word + "'";
    const std::string script = fmt::format(
        "source {}/tools/pmctl/completion/pmctl.bash && COMP_WORDS=({}) COMP_CWORD={} && _pmctl {} '{}' x && "
        "for each in \"${{COMPREPLY[@]}}\"; do echo \"$each\"; done",
        SOURCE_FOLDER, array, words.size(), PMCTL, current);
    const auto run = run_program({"/bin/bash", "--norc", "-c", script});
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.messages, IsEmpty());
    return lines_of(run.output);
}

class bash_completion : public runtime_dir_test {};

class bash_completion_with_switch : public bash_completion {
  protected:
    virtual_switch_process switch_{fixed_switch};
};

TEST_F(bash_completion_with_switch, knows_the_interfaces_in_their_order) {
    EXPECT_THAT(completed({"show", "interface", "fc1/1"}, "fc1/1"),
                ElementsAre("fc1/1", "fc1/10", "fc1/11", "fc1/12", "fc1/13", "fc1/14", "fc1/15", "fc1/16"));
    EXPECT_THAT(completed({"show", "interface", ""}, ""), AllOf(Contains("brief"), Contains("mgmt0")));
    EXPECT_THAT(completed({"show", "interface", "port-channel2."}, "port-channel2."), ElementsAre("port-channel2.7"));
}

TEST_F(bash_completion_with_switch, goes_on_after_a_comma) {
    EXPECT_THAT(completed({"show", "interface", "fc1/1,fc1/16,mg"}, "fc1/1,fc1/16,mg"),
                ElementsAre("fc1/1,fc1/16,mgmt0"));
}

// A question to a switch that is stopped is given up.
TEST_F(bash_completion_with_switch, does_not_wait_long) {
    switch_.send(SIGSTOP);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THAT(completed({"show", "interface", ""}, ""), AllOf(Contains("brief"), Not(Contains("fc1/1"))));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(4));
    switch_.send(SIGCONT);
}

TEST_F(bash_completion, knows_commands_and_options) {
    EXPECT_THAT(completed({"sho"}, "sho"), ElementsAre("show"));
    EXPECT_THAT(completed({"show", "interface", "brief", "--js"}, "--js"), ElementsAre("--json"));
    EXPECT_THAT(completed({"show", "interface", "--color", "a"}, "a"), ElementsAre("auto", "always"));
    EXPECT_THAT(completed({"show", "xyz"}, "xyz"), IsEmpty());
}

// bash replaces only what follows the '='.
TEST_F(bash_completion, joins_what_bash_parts) {
    EXPECT_THAT(completed({"show", "interface", "--color", "=", "a"}, "a"), ElementsAre("auto", "always"));
    EXPECT_THAT(completed({"show", "interface", "--color", "="}, ""), ElementsAre("auto", "always", "never"));
    EXPECT_THAT(completed({"--color", "=", "never", "show", "interface", "--js"}, "--js"), ElementsAre("--json"));
    EXPECT_THAT(completed({"show", "interface", "--color=a"}, "--color=a"),
                ElementsAre("--color=auto", "--color=always"));
}

TEST_F(bash_completion, is_silent_without_a_switch) {
    EXPECT_THAT(completed({"show", "interface", "fc"}, "fc"), IsEmpty());
    EXPECT_THAT(completed({"show", "interface", ""}, ""), AllOf(Contains("brief"), Not(Contains("fc1/1"))));
}

TEST_F(bash_completion, is_set_up_by_the_script) {
    const auto run = run_program({"/bin/bash", "--norc", "-c",
                                  "source " SOURCE_FOLDER "/tools/pmctl/completion/pmctl.bash && complete -p pmctl"});
    EXPECT_EQ(run.output, "complete -o nosort -F _pmctl pmctl\n");
}

// Typed into a bash in a folder of one file, which tells afterwards whether its name was completed.
TEST_F(bash_completion, leaves_redirections_to_bash) {
    const std::string folder = directory_.file("folder");
    const std::string typed = directory_.file("typed");
    for (const char *redirected : {"--version > ou", "--version >ou", "--version >", "--wrong 2> ou", "--wrong 2>ou"}) {
        std::ofstream(typed) << "source " SOURCE_FOLDER "/tools/pmctl/completion/pmctl.bash\n" PMCTL " " << redirected
                             << "\t\n";
        const auto run = shell("mkdir -p " + folder + " && cd " + folder +
                               " && : >output && HISTFILE= bash --norc -i <" + typed + " >/dev/null 2>&1; cat output");
        EXPECT_THAT(run.output, StartsWith("pmctl")) << redirected;
    }
}

}  // namespace
