// SPDX-License-Identifier: BSD-3-Clause
#include "apps/telop/OptionChecks.h"

#include <cmath>
#include <string>

namespace telop {

CLI::Validator WholeNumber(std::int64_t least, std::int64_t most) {
    auto const check = [least, most](const std::string& text) {
        std::int64_t number = 0;
        bool const fits =
            CLI::detail::lexical_cast(text, number) && number >= least && number <= most;
        return fits ? std::string()
                    : "'" + text + "' is not a whole number from " + std::to_string(least) +
                          " to " + std::to_string(most);
    };
    return { check, "" };
}

CLI::Validator PositiveFactor() {
    auto const check = [](const std::string& text) {
        double number = 0;
        bool const fits =
            CLI::detail::lexical_cast(text, number) && std::isfinite(number) && number > 0;
        return fits ? std::string() : "'" + text + "' is not a number above 0, such as 0.5";
    };
    return { check, "" };
}

} // namespace telop
