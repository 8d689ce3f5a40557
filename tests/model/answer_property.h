// SPDX-License-Identifier: Apache-2.0
// answer_property.h: hands answers to the library by each of its doors and looks at everything that comes back.
#ifndef MODEL_ANSWER_PROPERTY_H
#define MODEL_ANSWER_PROPERTY_H

#include <cstdlib>
#include <utility>

#include "naive_bytes.h"
#include "outcome.h"
#include "property.h"
#include "random_answer.h"

namespace model {

class answer_property : public property {
  protected:
    // The platform reads these elements from now on, wherever it is told that they are.
    void set_elements(const std::vector<element> &all);

    // Makes `call`, which gets where the count and the records go, and compares what it does with what is expected.
    template <typename Record, typename Call>
    void expect(const outcome<Record> &expected, Call call) {
        outcome<Record> seen;
        Record not_written;
        Record *records = &not_written;
        seen.status = call(&seen.count, &records);
        seen.printed = output.take();
        seen.reporters = take_reporters();
        if (records != &not_written) {
            seen.state = records == nullptr ? array::null : array::block;
            if (records != nullptr && expected.state == array::block) {
                seen.records.assign(records, records + expected.records.size());
            }
            std::free(records);
        }
        expect_same(expected, seen);
        EXPECT_EQ(heap.live_blocks(), 0);
    }

    // The same for a call that gets the payload and its size, and for one that gets a message.
    template <typename Record, typename Call>
    void expect_of_payload(const outcome<Record> &expected, const std::optional<support::bytes> &payload, Call call) {
        const support::guarded_bytes lies(payload.value_or(support::bytes{}));
        elements.set_origin(lies.data());
        expect(expected, [&](uint32_t *count, Record **records) {
            return call(payload ? lies.data() : nullptr, lies.size(), count, records);
        });
    }

    template <typename Record, typename Call>
    void expect_of_message(const outcome<Record> &expected, const std::optional<support::bytes> &payload,
                           const answer_message &in, Call call) {
        const mts_msg_t message = transport.message(in.opcode, payload, in.is_response);
        if (payload) elements.set_origin(transport.payload_of(message));
        expect(expected, [&](uint32_t *count, Record **records) { return call(&message, count, records); });
        transport.drop(message);
    }

    // The same for a call that makes a request over CMI.
    template <typename Record, typename Call>
    void expect_of_query(const outcome<Record> &expected, const cmi_result &result, Call call) {
        transport.will_answer_query(result.status, result.what.payload);
        expect(expected, call);
    }
};

}  // namespace model

#endif
