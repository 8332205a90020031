#include "PreferencesPage.h"

#include "ConfigStore.h"
#include "Texts.h"
#include "config/MenuKeys.h"
#include "platform/linux/TerminalServices.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <array>

namespace px::settings {

namespace {

constexpr std::array<const char*, 7> kFlagKeys{"pref check0",  "pref check1", "pref check2",
                                               "pref check3",  "pref check4", "pref check6",
                                               "open new file"};
constexpr std::array<const char*, 2> kTerminalKeys{"terminal", "second terminal"};
constexpr std::array<int, 3> kNextMenuValues{3, 4, 2};

QString label(const char* key) {
    return text(std::string("Settings ") + key);
}

QString tip(const char* key) {
    return text(std::string("Settings ") + key + " Tip");
}

QWidget* described(QWidget* control, const char* key) {
    control->setAccessibleName(QString(label(key)).remove('&'));
    control->setToolTip(tip(key));
    control->setAccessibleDescription(tip(key));
    control->setObjectName(key);
    return control;
}

} // namespace

PreferencesPage::PreferencesPage(ConfigStore& store, QWidget* parent)
    : QWidget(parent), m_store(store), m_nextMenu(new QComboBox) {
    auto* heading = new QLabel(text("Settings Page Preferences"));
    QFont font = heading->font();
    font.setBold(true);
    heading->setFont(font);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    for (const char* key : kFlagKeys) {
        auto* box = new QCheckBox(label(key));
        described(box, key);
        m_flags.push_back(box);
        layout->addWidget(box);
        connect(box, &QCheckBox::toggled, this, [this, key](bool on) {
            if (m_filling) return;
            m_store.setPreference(key, plist::Value(on));
            if (changed) changed();
        });
    }
    auto* form = new QFormLayout;
    for (int value : kNextMenuValues)
        m_nextMenu->addItem(text("Settings Next Menu " + std::to_string(value)), value);
    described(m_nextMenu, menukey::kCommonPathNextMenu);
    form->addRow(label(menukey::kCommonPathNextMenu), m_nextMenu);
    connect(m_nextMenu, &QComboBox::currentIndexChanged, this, [this] {
        if (m_filling) return;
        m_store.setPreference(menukey::kCommonPathNextMenu,
                              plist::Value(m_nextMenu->currentData().toInt()));
        if (changed) changed();
    });
    for (const char* key : kTerminalKeys)
        form->addRow(label(key), makeTerminalChoice(key));
    layout->addLayout(form);
    layout->addStretch();
    reload();
}

QComboBox* PreferencesPage::makeTerminalChoice(const char* key) {
    auto* choice = new QComboBox;
    described(choice, key);
    choice->addItem(text("Settings Terminal Automatic"), QString());
    for (const auto& emulator : platform::TerminalServices::installedEmulators())
        choice->addItem(qt(emulator), qt(emulator));
    m_terminals.push_back(choice);
    connect(choice, &QComboBox::currentIndexChanged, this, [this, choice] {
        if (!m_filling) saveTerminal(choice);
    });
    return choice;
}

void PreferencesPage::saveTerminal(QComboBox* choice) {
    const QString program = choice->currentData().toString();
    m_store.setPreference(utf8(choice->objectName()),
                          program.isEmpty() ? plist::Value() : plist::Value(utf8(program)));
    if (changed) changed();
}

void PreferencesPage::reload() {
    m_filling = true;
    auto& suite = m_store.suite();
    for (std::size_t i = 0; i < kFlagKeys.size(); ++i)
        m_flags[i]->setChecked(suite.boolForKey(kFlagKeys[i]));
    const int nextMenu =
        m_nextMenu->findData(static_cast<int>(suite.integerForKey(menukey::kCommonPathNextMenu)));
    m_nextMenu->setCurrentIndex(std::max(nextMenu, 0));
    for (auto* choice : m_terminals) {
        const QString stored = qt(suite.stringForKey(utf8(choice->objectName())).value_or(""));
        if (!stored.isEmpty() && choice->findData(stored) < 0) choice->addItem(stored, stored);
        choice->setCurrentIndex(std::max(choice->findData(stored), 0));
    }
    m_filling = false;
}

QCheckBox* PreferencesPage::flagBox(const char* key) const {
    for (std::size_t i = 0; i < kFlagKeys.size(); ++i)
        if (std::string(kFlagKeys[i]) == key) return m_flags[i];
    return nullptr;
}

QComboBox* PreferencesPage::terminalChoice(const char* key) const {
    for (auto* choice : m_terminals)
        if (choice->objectName() == key) return choice;
    return nullptr;
}

} // namespace px::settings
