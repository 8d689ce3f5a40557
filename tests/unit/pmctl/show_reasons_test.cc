// SPDX-License-Identifier: Apache-2.0
#include <nlohmann/json.hpp>

#include "command_test.h"
#include "failure.h"
#include "support/json_schema.h"

namespace {

using nlohmann::json;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class show_reasons : public command_test {};

TEST_F(show_reasons, lists_the_codes_that_have_texts) {
    const auto outcome = run({"show", "interface", "reasons"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.messages, IsEmpty());
    EXPECT_THAT(outcome.output, StartsWith("Code  Keyword              Message\n"
                                           "1     down                 Other\n"
                                           "2     none                 None\n"
                                           "3     hwFailure            Hardware failure\n"));
    EXPECT_THAT(outcome.output, HasSubstr("\n123   authFail             Authentication Failure\n"
                                          "128   sfpConnTypeErr       SFP Port Connector Type Not Supported \n"));
    EXPECT_THAT(outcome.output, EndsWith("\n191   lcoffline            LC Offline - port down due to module down\n"
                                         "255   modRemoved           Module removed\n"));
    EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 1 + 143);
    EXPECT_THAT(the_switch.asked, IsEmpty());
}

TEST_F(show_reasons, lists_every_code_when_asked) {
    const auto outcome = run({"show", "interface", "reasons", "--all"});
    EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 1 + 256);
    EXPECT_THAT(outcome.output, HasSubstr("\n0     down                 Unknown\n1 "));
    EXPECT_THAT(outcome.output, HasSubstr("\n124   down                 Unknown\n125 "));
}

TEST_F(show_reasons, are_objects_in_json) {
    const json reasons = json::parse(run({"show", "interface", "reasons", "--json"}).output).at("reasons");
    EXPECT_EQ(reasons.size(), 143u);
    EXPECT_EQ(reasons[28], json::parse(R"({"code": 29, "keyword": "sfpAbsent", "message": "SFP not present"})"));
    const json_schema schema(DOCUMENTS "/schema/pmctl-show-interface-reasons.schema.json");
    for (const json &reason : reasons) schema.expect_described("reason", reason);
    EXPECT_EQ(json::parse(run({"show", "interface", "reasons", "--json", "--all"}).output).at("reasons").size(), 256u);
}

TEST_F(show_reasons, takes_no_names) {
    EXPECT_THROW(run({"show", "interface", "fc1/1", "reasons"}), pmctl::usage_error);
}

}  // namespace
