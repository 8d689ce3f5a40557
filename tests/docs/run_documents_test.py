#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""What is wrong in a document is found, and named with its line."""
import pathlib
import tempfile
import time
import unittest
import unittest.mock

import markdown_blocks
import run_documents
import transcript

_ROOT = pathlib.Path(__file__).parents[2]

_SMALL_CHASSIS = """[chassis]
name = "small"
type = 6
slots = 1

[[module]]
slot = 1
kind = "fc"
ports = 8
"""
_SCHEMA = '{"type": "object", "required": ["ports"], "properties": {"ports": {"type": "integer", "maximum": 9}}}'


class small_tree(unittest.TestCase):
    """A tree with one document, with the programs of the real one."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        for name in ("docs/schema", "examples", "scripts"):
            (self.root / name).mkdir(parents=True)
        (self.root / "build").symlink_to(_ROOT / "build")
        (self.root / "examples/chassis").symlink_to(_ROOT / "examples/chassis")
        (self.root / "examples/add.c").write_text("int add(int a, int b) {\n    int sum = a + b;\n    return sum;\n}\n")
        (self.root / "examples/CMakeLists.txt").write_text("add_executable(add add.c)\n")
        (self.root / "docs/schema/ports.json").write_text(_SCHEMA)

    def problems_of(self, text, not_run=(), limit=20):
        (self.root / "page.md").write_text(text)
        exceptions = run_documents.exceptions_here(not_run, ())
        return run_documents.run_documents(self.root, exceptions, limit)[0]

    def expect_good(self, text):
        self.assertEqual(self.problems_of(text), [])

    def expect_problem(self, text, place, words):
        """One problem, at that place."""
        problems = self.problems_of(text)
        self.assertEqual(len(problems), 1, problems)
        self.assertTrue(problems[0].startswith(place + ": "), problems[0])
        self.assertIn(words, problems[0])


class language_test(small_tree):
    def test_a_block_without_a_language_is_found(self):
        self.expect_problem("# A\n\n```\nls\n```\n", "page.md:4", "without a language")

    def test_an_unknown_language_is_found(self):
        self.expect_problem("```perl\ndie\n```\n", "page.md:2", "unknown language: perl")

    def test_an_indented_block_is_found(self):
        self.expect_problem("Like this:\n\n    ls\n\n    pwd\n", "page.md:3", "indented block")

    def test_an_indented_paragraph_of_a_list_is_no_block(self):
        self.expect_good("1. One.\n\n    More of one.\n")

    def test_an_indented_block_after_a_list_is_found(self):
        self.expect_problem("- One.\n\nText.\n\n    ls\n", "page.md:5", "indented block")

    def test_text_is_not_run(self):
        self.expect_good("```text\nfalse\n```\n")

    def test_documents_below_docs_are_run(self):
        (self.root / "docs/guide").mkdir()
        (self.root / "docs/guide/first.md").write_text("```\n```\n")
        self.assertEqual(self.problems_of(""), ["docs/guide/first.md:2: a block without a language"])


class script_test(small_tree):
    def test_a_failing_command_is_found_with_its_line_and_output(self):
        text = "```sh\necho before\necho why >&2; false\ntrue\n```\n"
        self.expect_problem(text, "page.md:3", "status 1: echo why >&2; false\n    before\n    why")

    def test_a_command_that_does_not_exist_is_found(self):
        self.expect_problem("```sh\nno_such_command\n```\n", "page.md:2", "status 127")

    def test_a_command_that_fails_in_a_pipe_is_found(self):
        self.expect_problem("```sh\nfalse | cat\n```\n", "page.md:2", "failed with status 1: false | cat")

    def test_a_mistake_of_the_shell_language_is_found(self):
        self.expect_problem("```sh\nif true\n```\n", "page.md:2", "failed with status 2")

    def test_a_block_that_hangs_is_found_with_its_output(self):
        problems = self.problems_of("```sh\necho begun; sleep 60\n```\n\n```sh\nfalse\n```\n", limit=1)
        self.assertEqual(len(problems), 1, problems)
        self.assertTrue(problems[0].startswith("page.md:2: did not end in time"), problems[0])
        self.assertTrue(problems[0].endswith("    begun"), problems[0])

    def test_a_block_that_ends_the_shell_is_found(self):
        self.expect_problem("```sh\nexit 0\n```\n", "page.md:2", "ended the shell")

    def test_blocks_share_one_shell(self):
        self.expect_good("```sh\nexport A=1; cd examples\n```\n\n```console\n$ echo $A; ls *.c\n1\nadd.c\n```\n")

    def test_files_land_in_no_directory_of_others(self):
        name = self.root.name
        self.expect_good(f"```sh\nmkdir /run/{name}; echo 1 >/tmp/{name}.txt; echo 1 >~/{name}; echo 1 >{name}\n```\n")
        places = (f"/run/{name}", f"/tmp/{name}.txt", pathlib.Path.home() / name, self.root / name)
        self.assertFalse(any(pathlib.Path(place).exists() for place in places))

    def test_programs_in_the_background_are_waited_for_and_ended(self):
        text = (
            "```sh\nexport PATH=$PWD/build/switch/bin:$PATH MTS_RUNTIME_DIR=/tmp/lab\n"
            "pm-virtual-switch examples/chassis/fixed.toml &\necho $! >examples/pid\n"
            "pmctl show interface brief\n```\n"
        )
        self.expect_good(text)
        pid = int((self.root / "examples/pid").read_text())
        self.assertFalse(pathlib.Path(f"/proc/{pid}").exists())

    def test_a_program_in_the_background_that_is_silent_is_not_waited_for_long(self):
        start = time.monotonic()
        self.expect_good("```sh\nsleep 60 >/tmp/silent &\ntrue\n```\n")
        self.assertLess(time.monotonic(), start + 9)

    def test_watching_is_ended_as_by_its_reader(self):
        watching = "bash -c 'trap \"exit 0\" INT; while :; do sleep 0.1; done' x --watch 2"
        self.expect_good(f"```sh\n{watching}\n```\n")

    def test_what_is_excepted_is_not_run(self):
        not_run = [("page.md", "false", "it fails"), ("page.md", "exit", "it ends")]
        self.assertEqual(self.problems_of("```sh\nfalse\n```\n\n```console\n$ exit\n$ echo a\na\n```\n", not_run), [])

    def test_an_exception_behind_the_end_of_the_shell_is_none_too_many(self):
        exceptions = (("page.md", "false", "it fails"),)
        problems = self.problems_of("```sh\nexit 0\n```\n\n```sh\nfalse\n```\n", exceptions)
        self.assertEqual(len(problems), 1, problems)
        self.assertIn("ended the shell", problems[0])

    def test_what_needs_root_is_excepted_for_others(self):
        with unittest.mock.patch("os.geteuid", lambda: 1000):
            exceptions = run_documents.exceptions_here([], [("page.md", "id")])
        self.assertEqual(exceptions.reason("page.md", "id"), "it needs root")
        self.assertEqual(run_documents.exceptions_here([], []).reason("page.md", "id"), "")

    def test_an_exception_that_no_document_has_is_found(self):
        problems = self.problems_of("```sh\ntrue\n```\n", [("page.md", "false", "it fails")])
        self.assertEqual(len(problems), 1, problems)
        self.assertIn("page.md: run_documents.py excepts a command that is not there: false", problems[0])


class transcript_test(small_tree):
    def test_other_output_is_found_with_the_line_of_its_command(self):
        text = "```console\n$ echo a\na\n$ printf 'b\\nc\\n'\nb\nd\n```\n"
        self.expect_problem(text, "page.md:4", "wanted:  d\n    printed: c")

    def test_more_output_is_found(self):
        text = "```console\n$ printf 'a\\nb\\n'\na\n```\n"
        self.expect_problem(text, "page.md:2", "wanted:  nothing more\n    printed: b")

    def test_less_output_is_found(self):
        self.expect_problem("```console\n$ echo a\na\nb\n```\n", "page.md:2", "wanted:  b")

    def test_a_silent_failure_is_found(self):
        self.expect_problem("```console\n$ false\n```\n", "page.md:2", "failed with status 1")

    def test_a_failure_that_is_not_all_shown_is_found(self):
        self.expect_problem("```console\n$ echo no; false\n...\n```\n", "page.md:2", "failed with status 1")

    def test_a_failure_that_is_shown_is_good(self):
        self.expect_good("```console\n$ echo no >&2; false\nno\n```\n")

    def test_output_before_a_command_is_found(self):
        self.expect_problem("```console\na\n$ echo a\n```\n", "page.md:2", "begins with a command")

    def test_a_command_goes_on_in_the_next_line(self):
        self.expect_good("```console\n$ echo a \\\nb\na b\n$ cat <<END\n> c\n> END\nc\n```\n")

    def test_dots_stand_for_any_lines_and_for_the_rest_of_one(self):
        for expected in (["..."], ["a", "..."], ["  ...", "cde"], ["a", "...", "b", "c..."], ["a", "b", "cd..."]):
            self.assertEqual(transcript.difference(expected, ["a", "b", "cde"]), [])
        for expected in (["a", "..."], ["...", "d"], ["a", "c..."], ["..."]):
            self.assertNotEqual(transcript.difference(expected + ["x"], ["a", "b", "cde"]), [])

    def test_paths_are_shown_as_they_were_typed(self):
        self.expect_good("```console\n$ mkdir /run/x; cd /run/x; pwd\n/run/x\n```\n")


class excerpt_test(small_tree):
    def excerpt(self, lines, note="<!-- from examples/add.c -->", language="c"):
        return f"{note}\n```{language}\n{lines}\n```\n"

    def test_an_excerpt_is_good_to_the_letter_and_wherever_it_begins(self):
        self.expect_good(self.excerpt("    int sum = a + b;\n    return sum;\n}"))
        self.expect_good(self.excerpt("int sum = a + b;\nreturn sum;"))

    def test_a_stale_excerpt_is_found(self):
        self.expect_problem(self.excerpt("int sum = a - b;"), "page.md:3", "no excerpt of examples/add.c")

    def test_an_excerpt_of_no_file_is_found(self):
        for note in ("<!-- from examples/no.c -->", "<!-- from docs/schema/ports.json -->", ""):
            self.expect_problem(self.excerpt("x", note, "cmake"), "page.md:3", "names a file")

    def test_a_program_that_no_test_builds_is_found(self):
        (self.root / "examples/CMakeLists.txt").write_text("add_executable(add other_add.c)\n")
        self.expect_problem(self.excerpt("return sum;"), "page.md:3", "do not build add.c")


class file_test(small_tree):
    def chassis(self, *texts):
        return "\n".join(f"{text}\n" if text.startswith("<") else f"```toml\n{text}\n```\n" for text in texts)

    def test_a_chassis_is_loaded(self):
        self.expect_good(self.chassis(_SMALL_CHASSIS))
        self.expect_problem(self.chassis(_SMALL_CHASSIS + "\nslots = 1\n"), "page.md:2", "slots")

    def test_a_part_is_added_to_what_stands_before_it(self):
        part = '[[ports]]\nname = "fc1/8"\nstate = "no-sfp"'
        self.expect_good(self.chassis(_SMALL_CHASSIS, part))
        self.expect_problem(self.chassis(part), "page.md:2", "no [chassis]")
        self.expect_problem(self.chassis(_SMALL_CHASSIS, part.replace("1/8", "1/9")), "page.md:15", "fc1/9")

    def test_a_part_is_added_to_the_file_of_its_note(self):
        note = "<!-- added to examples/chassis/director.toml -->"
        self.expect_good(self.chassis(note, '[[ports]]\nname = "fc2/48"'))
        self.expect_problem(self.chassis(note, '[[ports]]\nname = "fc2/49"'), "page.md:4", "fc2/49")

    def test_a_state_file_is_loaded(self):
        note = "<!-- state file of examples/chassis/director.toml -->"
        self.expect_good(self.chassis(note, '[[deleted]]\nname = "Ethernet4/7.100"'))
        self.expect_problem(self.chassis(note, '[[deletd]]\nname = "Ethernet4/7.100"'), "page.md:4", "deletd")

    def test_an_excerpt_of_a_chassis_is_compared(self):
        note = "<!-- from examples/chassis/director.toml -->"
        self.expect_good(self.chassis(note, 'name = "director"'))
        self.expect_problem(self.chassis(note, 'name = "directr"'), "page.md:4", "no excerpt")

    def test_json_is_held_against_its_schema(self):
        note = "<!-- schema docs/schema/ports.json -->\n```json\n"
        self.expect_good(note + '{"ports": 9}\n```\n')
        self.expect_problem(note + '{"ports": 10}\n```\n', "page.md:3", "$.ports: 10 is greater than the maximum")
        self.expect_problem(note + '{"ports":\n10,}\n```\n', "page.md:4", "no JSON")
        self.expect_problem('```json\n{"ports": 9}\n```\n', "page.md:2", "<!-- schema docs/schema/FILE -->")


class link_test(small_tree):
    def test_a_link_to_no_file_is_found(self):
        self.expect_good("[a](docs/schema/ports.json) [b](https://example.org/x) `[c](d.md)`\n")
        self.expect_problem("A\n[a](docs/none.json)\n", "page.md:2", "docs/none.json")

    def test_a_link_to_no_heading_is_found(self):
        (self.root / "docs/other.md").write_text("# One\n\n## `pmctl` in two, or three\n\n```sh\n# four\n```\n")
        self.expect_good("## Here it is\n[a](#here-it-is) [b](docs/other.md#pmctl-in-two-or-three)\n")
        self.expect_problem("[a](#there)\n", "page.md:1", "#there")
        self.expect_problem("```text\n```\n[a](docs/other.md#four)\n", "page.md:3", "docs/other.md#four")


class markdown_test(unittest.TestCase):
    def test_a_block_knows_its_place_its_note_and_its_lines(self):
        text = "- item\n\n  <!-- from a.c -->\n\n  ```c\n  one\n    two\n  ```\n\n````text\n```\n````\n"
        first, second = markdown_blocks.code_blocks("page.md", text.splitlines())
        self.assertEqual((first.line, first.language, first.note), (6, "c", "from a.c"))
        self.assertEqual(first.lines, ["one", "  two"])
        self.assertEqual((second.line, second.lines, second.note), (11, ["```"], ""))


if __name__ == "__main__":
    unittest.main()
