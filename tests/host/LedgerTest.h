// SPDX-License-Identifier: BSD-3-Clause
// A fixture whose cases must leave nothing lent and no call against the rules that they did not ask
// about.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "host/Ledger.h"

namespace host {

class LedgerTest : public testing::Test {
protected:
    LedgerTest() { Ledger::Get().ForgetMisuse(); }
    ~LedgerTest() override {
        EXPECT_EQ(Ledger::Get().Describe(), "");
        EXPECT_EQ(Alive(), m_alive);
        Ledger::Get().ForgetMisuse();
    }

    // What was misused since the last call of this.
    static std::vector<std::string> TakeMisuse() {
        auto messages = Ledger::Get().MisuseMessages();
        Ledger::Get().ForgetMisuse();
        return messages;
    }

private:
    static std::int64_t Alive() {
        const auto& ledger = Ledger::Get();
        return ledger.Outstanding(Lent::kHandle) + ledger.Outstanding(Lent::kArchive) +
               ledger.Outstanding(Lent::kImage);
    }

    std::int64_t m_alive = Alive();
};

} // namespace host
