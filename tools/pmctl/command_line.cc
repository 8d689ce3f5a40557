// SPDX-License-Identifier: Apache-2.0
// The only file that knows CLI11, which takes long to compile.
#include "command_line.h"

#include <fmt/core.h>

#include <CLI/CLI.hpp>

#include "command_table.h"
#include "failure.h"

namespace pmctl {
namespace {

// The parser built from the command table. Arguments of one name are one argument wherever they stand, so that
// `show interface --json brief` means what it says.
class parser {
  public:
    parser() {
        app_.set_version_flag("--version", fmt::format("pmctl {}", PMCTL_VERSION), "Print the version and exit");
        app_.set_help_flag("-h,--help", "Print this help and exit");
        app_.add_flag("--verbose", verbose_, "Print the diagnostics of the library on standard error");
        app_.fallthrough();
        app_.footer(every_command() + "\n" + every_example());
        for (const command &each : all_commands()) add_command(each);
    }

    invocation parse(int argc, const char *const *argv) {
        try {
            app_.parse(argc, argv);
        } catch (const CLI::Success &request) {
            return {nullptr, {}, false, text_of(request)};
        } catch (const CLI::ExtrasError &) {
            throw usage_error(fmt::format("not a known word here: {}", app_.remaining(true).front()));
        } catch (const CLI::ParseError &error) {
            throw usage_error(first_line(error.what()));
        }
        const command *named = named_command();
        arguments all = given();
        refuse_others(*named, all);
        return {named, std::move(all), verbose_, {}};
    }

  private:
    static std::string every_command() {
        std::string text = "Commands:\n";
        for (const command &each : all_commands())
            if (each.run != nullptr) text += fmt::format("  {:26}{}\n", each.words, each.summary);
        return text;
    }

    static std::string every_example() {
        std::string text = "Examples:\n";
        for (const command &each : all_commands()) text += each.examples;
        return text;
    }

    static std::string first_line(const std::string &text) { return text.substr(0, text.find('\n')); }

    std::string text_of(const CLI::Success &request) {
        return request.get_name() == "CallForHelp" ? app_.help() : std::string(request.what()) + "\n";
    }

    static CLI::App *child_of(CLI::App *node, const std::string &word) {
        for (CLI::App *child : node->get_subcommands([](CLI::App *) { return true; }))
            if (child->get_name() == word) return child;
        return node->add_subcommand(word);
    }

    // The node of the words, made when it is new.
    CLI::App *node_of(std::string_view words) {
        CLI::App *node = &app_;
        for (const std::string &word : CLI::detail::split(std::string(words), ' ')) node = child_of(node, word);
        return node;
    }

    void add_command(const command &each) {
        CLI::App *node = node_of(each.words);
        node->description(each.summary);
        if (*each.examples != '\0') node->footer(fmt::format("Examples:\n{}", each.examples));
        for (const argument &taken : each.takes) add_argument(node, taken);
        nodes_.emplace(node, &each);
    }

    void add_argument(CLI::App *node, const argument &taken) {
        if (taken.kind == argument_kind::flag)
            node->add_flag(taken.name, flags_[taken.name], taken.help);
        else
            node->add_option(taken.name, words_[taken.name], taken.help);
    }

    // The node that the command line led to.
    const CLI::App *deepest_node() const {
        const CLI::App *node = &app_;
        while (!node->get_subcommands().empty()) node = node->get_subcommands().front();
        return node;
    }

    const command *named_command() const {
        const auto found = nodes_.find(deepest_node());
        if (found == nodes_.end() || found->second->run == nullptr)
            throw usage_error("the command is not complete: see pmctl --help");
        return found->second;
    }

    // An argument of `show interface` is none of `show interface brief`.
    static void refuse_others(const command &named, const arguments &given) {
        const auto takes = [&named](const std::string &name) {
            return std::any_of(named.takes.begin(), named.takes.end(),
                               [&name](const argument &taken) { return taken.name == name; });
        };
        for (const auto &[name, words] : given.all())
            if (!takes(name))
                throw usage_error(
                    fmt::format("{} does not take: {}", named.words, words.empty() ? name : words.front()));
    }

    arguments given() const {
        arguments all;
        for (const auto &[name, set] : flags_)
            if (set) all.set(name, {});
        for (const auto &[name, words] : words_)
            if (!words.empty()) all.set(name, words);
        return all;
    }

    CLI::App app_{"Shows the ports of a switch.", "pmctl"};
    bool verbose_ = false;
    std::map<std::string, bool> flags_;
    std::map<std::string, std::vector<std::string>> words_;
    std::map<const CLI::App *, const command *> nodes_;
};

}  // namespace

invocation parse_command_line(int argc, const char *const *argv) { return parser().parse(argc, argv); }

}  // namespace pmctl
