#include "StatusReporter.h"

#include "HEventMessage.h"
#include "HQtUtil.h"
#include "core/ScriptOutput.h"
#include "scene/Selection.h"
#include "scene/SelectionItems.h"

#include <QLabel>
#include <QStatusBar>

namespace app {

StatusReporter::StatusReporter(QStatusBar& bar)
    : m_bar(bar), m_selection(new QLabel),
      m_output(HCommandMessage::addCommandOutputCallback(message, this)),
      m_selectionChanged(
          HEventMessage::addEventCallback("SelectionChanged", selectionChanged, this)),
      m_sceneOpened(HEventMessage::addEventCallback("SceneOpened", selectionChanged, this)) {
    m_selection->setObjectName("selectionSummary");
    m_bar.addPermanentWidget(m_selection);
    selectionChanged(this);
}

StatusReporter::~StatusReporter() {
    HMessage::removeCallback(m_output);
    HMessage::removeCallback(m_selectionChanged);
    HMessage::removeCallback(m_sceneOpened);
    delete m_selection.data();
}

QString StatusReporter::describeSelection() {
    runtime::Selection& selection = runtime::selection();
    std::vector<std::string> texts =
        runtime::itemTexts(runtime::scene(), HApiAccess::items(selection.active()));
    if (texts.empty())
        return "Nothing selected";
    QStringList named;
    for (size_t i = 0; i < texts.size() && i < kNamedItems; ++i)
        named.append(QString::fromStdString(texts[i]));
    QString summary = "Selected: " + named.join(' ');
    if (texts.size() > kNamedItems)
        summary += QString(" and %1 more").arg(texts.size() - kNamedItems);
    return summary;
}

void StatusReporter::message(const HString& text, HCommandMessage::MessageType type, void* self) {
    if (type == HCommandMessage::kHistory)
        return;
    QString line = HQtUtil::toQString(runtime::ScriptOutput::formatLine(text, type));
    static_cast<StatusReporter*>(self)->m_bar.showMessage(line.section('\n', 0, 0));
}

void StatusReporter::selectionChanged(void* self) {
    static_cast<StatusReporter*>(self)->m_selection->setText(describeSelection());
}

} // namespace app
