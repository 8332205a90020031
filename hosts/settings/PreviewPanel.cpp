#include "PreviewPanel.h"

#include "ConfigStore.h"
#include "PreviewMenu.h"
#include "Texts.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <unistd.h>

namespace px::settings {

namespace {

enum Situation { OneFile, SeveralItems, Background };

void addEntries(QTreeWidgetItem* parent, QTreeWidget* tree, const Menu& menu) {
    for (const auto& entry : menu) {
        auto* row = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(tree);
        if (entry.separator) {
            row->setText(0, QStringLiteral("────────"));
            row->setFlags(Qt::NoItemFlags);
            continue;
        }
        row->setText(0, qt(entry.title));
        row->setIcon(0, iconFor(entry.icon));
        addEntries(row, tree, entry.children);
    }
}

} // namespace

PreviewPanel::PreviewPanel(ConfigStore& store, QWidget* parent)
    : QWidget(parent), m_store(store), m_situation(new QComboBox), m_tree(new QTreeWidget) {
    auto* label = new QLabel(text("Settings Preview For"));
    label->setBuddy(m_situation);
    m_situation->addItem(text("Settings Preview One File"), OneFile);
    m_situation->addItem(text("Settings Preview Several Items"), SeveralItems);
    m_situation->addItem(text("Settings Preview Background"), Background);
    m_situation->setAccessibleName(QString(text("Settings Preview For")).remove('&'));
    m_situation->setToolTip(text("Settings Preview Tip"));
    m_tree->setHeaderHidden(true);
    m_tree->setAccessibleName(text("Settings Preview"));
    m_tree->setToolTip(text("Settings Preview Tip"));
    m_tree->setIconSize({16, 16});
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_situation);
    layout->addWidget(m_tree);
    connect(m_situation, &QComboBox::currentIndexChanged, this, [this] { refresh(); });
    makeSamples();
}

// A document, a picture and a folder, in a scratch folder of this process.
void PreviewPanel::makeSamples() {
    QDir scratch(QDir::tempPath());
    const QString name = QStringLiteral("pxmenu-preview-%1").arg(::getuid());
    scratch.mkpath(name + "/Folder");
    scratch.cd(name);
    m_folder = utf8(scratch.absolutePath());
    for (const char* sample : {"Document.txt", "Picture.png"}) {
        QFile file(scratch.filePath(sample));
        if (!file.exists() && file.open(QIODevice::WriteOnly)) file.close();
        m_files.push_back(m_folder + "/" + sample);
    }
    m_files.push_back(m_folder + "/Folder");
}

void PreviewPanel::refresh() {
    const int situation = m_situation->currentData().toInt();
    std::vector<std::string> selection;
    if (situation == OneFile) selection = {m_files.front()};
    if (situation == SeveralItems) selection = m_files;
    Menu menu = previewMenu(m_store.shared(), situation == Background ? 1 : 0, selection, m_folder);
    m_tree->clear();
    addEntries(nullptr, m_tree, menu);
}

} // namespace px::settings
