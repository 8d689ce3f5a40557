// SPDX-License-Identifier: Apache-2.0
#include "support/manual_page.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>

std::string text_of_file(const std::string &path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string without_escapes(std::string text) {
    for (size_t at; (at = text.find("\\-")) != std::string::npos;) text.replace(at, 2, "-");
    for (size_t at; (at = text.find("\\&")) != std::string::npos;) text.erase(at, 2);
    return text;
}

std::map<std::string, std::string> parts_under(const std::string &begin, const std::string &end,
                                               const std::string &text) {
    std::map<std::string, std::string> parts;
    std::string *part = nullptr;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(begin))
            part = &parts[line.substr(begin.size())];
        else if (line.starts_with(end))
            part = nullptr;
        else if (part != nullptr)
            *part += line + "\n";
    }
    return parts;
}

std::string up_to(const std::string &mark, const std::string &text) { return text.substr(0, text.find(mark)); }

std::string after(const std::string &mark, const std::string &text) {
    const size_t found = text.find(mark);
    return found == std::string::npos ? "" : text.substr(found + mark.size());
}

std::vector<std::string> tagged_words(const std::string &section) {
    std::vector<std::string> words;
    for (std::string rest = after(".TP\n", section); !rest.empty(); rest = after(".TP\n", rest)) {
        std::string tag = after(" ", up_to("\n", rest));
        std::ranges::replace_if(
            tag, [](char each) { return each == '"' || each == ','; }, ' ');
        std::istringstream stream(tag);
        for (std::string word; stream >> word;)
            if (word[0] >= 'a' && word[0] <= 'z') words.push_back(word);
    }
    std::ranges::sort(words);
    return words;
}

std::string complaints_about(const std::string &path) {
    const std::string command = "(groff -man -ww -b -z -Tutf8 " + path + "; mandoc -T lint " + path + ") 2>&1";
    FILE *const checks = popen(command.c_str(), "r");
    if (checks == nullptr) return "cannot be checked";
    std::array<char, 4096> complaints{};
    const size_t length = fread(complaints.data(), 1, complaints.size(), checks);
    const int status = pclose(checks);
    const std::string said(complaints.data(), length);
    return status == 0 ? said : said + "status " + std::to_string(status);
}
