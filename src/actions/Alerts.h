#pragma once

#include "platform/Ui.h"

#include <functional>
#include <string>
#include <vector>

// The one-line message alert and its family. The alert's title is the localized "Tip" and the
// message is its informative text. Without a handler the answer is ignored; with one, the
// handler gets the answer: 1000 for the first button, 1001 for the next, ...
namespace px::alert {

using Handler = std::function<void(int result)>;

void alertWithMsg(platform::Ui& ui, const std::string& msg);
void alertWithMsg(platform::Ui& ui, const std::string& msg, const Handler& handler);
// The general form: the custom buttons in order, or one "OK" button when there are none.
void alertWithMsg(platform::Ui& ui, const std::string& msg,
                  const std::vector<std::string>& customButtons, const Handler& handler);

} // namespace px::alert
