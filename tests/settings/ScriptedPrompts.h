#pragma once

#include "Prompts.h"

#include <QStringList>
#include <deque>
#include <gtest/gtest.h>

namespace px::test {

// Answers the window's questions from queues filled by a test, and keeps what it was told.
class ScriptedPrompts final : public settings::Prompts {
  public:
    std::deque<std::optional<std::string>> paths; // folder, file and save choosers, in order
    std::deque<std::optional<platform::DesktopApplication>> applications;
    std::deque<bool> answers; // confirmations
    QStringList questions;
    QStringList messages;

    std::optional<std::string> chooseFolder(QWidget*, const QString&) override {
        return next(paths, "folder chooser");
    }
    std::optional<std::string> chooseFile(QWidget*, const QString&, const QString&) override {
        return next(paths, "file chooser");
    }
    std::optional<std::string> chooseSaveFile(QWidget*, const QString&, const QString&) override {
        return next(paths, "save chooser");
    }
    std::optional<platform::DesktopApplication> chooseApplication(QWidget*) override {
        return next(applications, "application chooser");
    }
    bool confirm(QWidget*, const QString& message) override {
        questions << message;
        return next(answers, "confirmation");
    }
    void inform(QWidget*, const QString& message) override { messages << message; }

  private:
    template <typename T> static std::optional<T> nextOf(std::deque<T>& queue, const char* what) {
        if (queue.empty()) {
            ADD_FAILURE() << "unexpected " << what;
            return std::nullopt;
        }
        T answer = queue.front();
        queue.pop_front();
        return answer;
    }
    template <typename T> static T next(std::deque<T>& queue, const char* what) {
        if constexpr (std::is_same_v<T, bool>)
            return nextOf(queue, what).value_or(false);
        else
            return nextOf(queue, what).value_or(T{});
    }
};

} // namespace px::test
