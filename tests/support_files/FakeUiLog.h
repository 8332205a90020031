#pragma once

#include "platform/fake/FakeUi.h"

#include <string>
#include <vector>

// What a FakeUi was shown, in the shapes tests compare.
namespace px::test {

using ProgressKind = platform::FakeUi::ProgressEvent::Kind;

inline std::vector<ProgressKind> progressKinds(const platform::FakeUi& ui) {
    std::vector<ProgressKind> kinds;
    for (const auto& event : ui.progress())
        kinds.push_back(event.kind);
    return kinds;
}

// The fractions the progress window showed, in order.
inline std::vector<double> progressFractions(const platform::FakeUi& ui) {
    std::vector<double> fractions;
    for (const auto& event : ui.progress())
        if (event.kind == ProgressKind::Percent) fractions.push_back(event.fraction);
    return fractions;
}

// The informative text of every alert, in order.
inline std::vector<std::string> alertTexts(const platform::FakeUi& ui) {
    std::vector<std::string> texts;
    for (const auto& alert : ui.alerts())
        texts.push_back(alert.informative);
    return texts;
}

} // namespace px::test
