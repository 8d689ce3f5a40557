// SPDX-License-Identifier: Apache-2.0
// manual_page.h: the text of documents in parts, to be held against the code.
#ifndef SUPPORT_MANUAL_PAGE_H
#define SUPPORT_MANUAL_PAGE_H

#include <map>
#include <string>
#include <vector>

std::string text_of_file(const std::string &path);

// With '-' for "\-", and without what only parts words.
std::string without_escapes(std::string text);

// The text under each heading that begins so, up to the next one or to one that begins with `end`.
std::map<std::string, std::string> parts_under(const std::string &begin, const std::string &end,
                                               const std::string &text);

// What stands before this mark.
std::string up_to(const std::string &mark, const std::string &text);

// What stands behind it; nothing when it is not there.
std::string after(const std::string &mark, const std::string &text);

// The words that begin with a small letter in the tags of a section's tagged paragraphs, in alphabetical order.
std::vector<std::string> tagged_words(const std::string &section);

// What groff and mandoc complain of; nothing when the page is well formed.
std::string complaints_about(const std::string &path);

#endif
