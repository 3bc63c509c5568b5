#include "Outliner.h"

#include "CommandRunner.h"
#include "HEventMessage.h"
#include "scene/Selection.h"
#include "scene/SelectionItems.h"

#include <QHeaderView>
#include <QItemSelectionModel>

namespace app {

namespace {

const runtime::Node* nodeOfItem(const QTreeWidgetItem* item) {
    return reinterpret_cast<const runtime::Node*>(
        item->data(Outliner::kNameColumn, Qt::UserRole).value<quintptr>());
}

} // namespace

Outliner::Outliner(CommandRunner& runner, QWidget* parent)
    : QTreeWidget(parent), m_runner(runner), m_dependencySection(new QTreeWidgetItem) {
    setObjectName("outliner");
    setColumnCount(2);
    setHeaderLabels({"Name", "Type"});
    header()->setSectionResizeMode(kNameColumn, QHeaderView::Stretch);
    header()->setSectionResizeMode(kTypeColumn, QHeaderView::ResizeToContents);
    header()->setStretchLastSection(false);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setUniformRowHeights(true);

    m_dependencySection->setText(kNameColumn, "Dependency nodes");
    m_dependencySection->setFlags(Qt::ItemIsEnabled);
    QFont font = m_dependencySection->font(kNameColumn);
    font.setItalic(true);
    m_dependencySection->setFont(kNameColumn, font);
    addTopLevelItem(m_dependencySection);
    m_dependencySection->setFirstColumnSpanned(true);

    for (const runtime::NodePtr& node : runtime::scene().nodesParentsFirst())
        addNode(node);
    updateSectionVisibility();
    expandAll();
    followSelection();

    m_listener = runtime::scene().addListener(
        [this](const runtime::SceneChange& change) { sceneChanged(change); });
    m_selectionCallback =
        HEventMessage::addEventCallback("SelectionChanged", selectionChangedInScene, this);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &Outliner::selectInScene);
}

Outliner::~Outliner() {
    HMessage::removeCallback(m_selectionCallback);
    runtime::scene().removeListener(m_listener);
}

QTreeWidgetItem* Outliner::itemOf(const runtime::Node& node) const {
    auto found = m_entries.find(&node);
    return found == m_entries.end() ? nullptr : found->second.item;
}

void Outliner::sceneChanged(const runtime::SceneChange& change) {
    switch (change.kind) {
    case runtime::SceneChange::kNodesAdded:
        for (const runtime::NodePtr& node : change.nodes)
            addNode(node);
        break;
    case runtime::SceneChange::kNodesRemoved:
        for (const runtime::NodePtr& node : change.nodes)
            removeNode(*node);
        break;
    case runtime::SceneChange::kNodeRenamed:
        for (const runtime::NodePtr& node : change.nodes)
            if (QTreeWidgetItem* item = itemOf(*node))
                item->setText(kNameColumn, QString::fromStdString(node->name()));
        break;
    case runtime::SceneChange::kNodeReparented:
        for (const runtime::NodePtr& node : change.nodes)
            if (QTreeWidgetItem* item = itemOf(*node))
                place(item, *node);
        break;
    case runtime::SceneChange::kSceneReset:
        clearNodes();
        break;
    default:
        return; // values, connections, geometry and weights do not show here
    }
    updateSectionVisibility();
}

QTreeWidgetItem* Outliner::addNode(const runtime::NodePtr& node) {
    if (!node || !node->isAlive())
        return nullptr;
    if (QTreeWidgetItem* existing = itemOf(*node))
        return existing;
    // A parent restored after its children gets its row first.
    if (node->parent() && !itemOf(*node->parent()))
        addNode(node->parent()->shared_from_this());
    QTreeWidgetItem* item = new QTreeWidgetItem;
    item->setText(kNameColumn, QString::fromStdString(node->name()));
    item->setText(kTypeColumn, QString::fromStdString(node->typeName()));
    item->setData(kNameColumn, Qt::UserRole,
                  QVariant::fromValue(reinterpret_cast<quintptr>(node.get())));
    m_entries[node.get()] = Entry{node, item};
    place(item, *node);
    return item;
}

void Outliner::removeNode(const runtime::Node& node) {
    QTreeWidgetItem* item = itemOf(node);
    if (!item)
        return;
    forget(item);
    delete item;
}

// Drops the entries of the item and of every item below it.
void Outliner::forget(QTreeWidgetItem* item) {
    for (int i = 0; i < item->childCount(); ++i)
        forget(item->child(i));
    m_entries.erase(nodeOfItem(item));
}

// Puts the item where the node is: under its parent's row, among the top rows before the
// dependency section, or in the section.
void Outliner::place(QTreeWidgetItem* item, const runtime::Node& node) {
    if (QTreeWidgetItem* holder = item->parent())
        holder->removeChild(item);
    else if (int index = indexOfTopLevelItem(item); index >= 0)
        takeTopLevelItem(index);

    if (!node.isDag()) {
        m_dependencySection->addChild(item);
        return;
    }
    int position = static_cast<int>(runtime::scene().childPosition(node));
    QTreeWidgetItem* parentItem = node.parent() ? itemOf(*node.parent()) : nullptr;
    if (parentItem) {
        parentItem->insertChild(std::min(position, parentItem->childCount()), item);
        parentItem->setExpanded(true);
    } else {
        insertTopLevelItem(std::min(position, topLevelItemCount() - 1), item);
    }
}

void Outliner::clearNodes() {
    m_entries.clear();
    qDeleteAll(m_dependencySection->takeChildren());
    while (topLevelItemCount() > 1)
        delete takeTopLevelItem(0);
}

void Outliner::updateSectionVisibility() {
    bool empty = m_dependencySection->childCount() == 0;
    if (m_dependencySection->isHidden() != empty) {
        m_dependencySection->setHidden(empty);
        m_dependencySection->setExpanded(true);
    }
}

void Outliner::selectionChangedInScene(void* self) {
    static_cast<Outliner*>(self)->followSelection();
}

void Outliner::followSelection() {
    m_following = true;
    clearSelection();
    QTreeWidgetItem* first = nullptr;
    for (const runtime::SelectionItem& selected :
         HApiAccess::items(runtime::selection().active())) {
        runtime::NodePtr node = runtime::itemNode(selected);
        QTreeWidgetItem* item = node ? itemOf(*node) : nullptr;
        if (!item)
            continue;
        item->setSelected(true);
        if (!first)
            first = item;
    }
    if (first)
        scrollToItem(first);
    m_following = false;
}

void Outliner::selectInScene(const QItemSelection& selected, const QItemSelection& deselected) {
    if (m_following)
        return;
    QModelIndexList rows = selectionModel()->selectedRows(kNameColumn);
    QStringList added = namesOf(selected.indexes());
    QStringList removed = namesOf(deselected.indexes());
    QString command;
    if (rows.isEmpty())
        command = "select -cl";
    else if (!removed.isEmpty() && !added.isEmpty())
        command = "select -r " + namesOf(rows).join(' ');
    else if (!added.isEmpty())
        command = (added.size() == rows.size() ? "select -r " : "select -add ") + added.join(' ');
    else if (!removed.isEmpty())
        command = "select -d " + removed.join(' ');
    else
        return;
    if (!m_runner.run(command))
        followSelection();
}

// The names `select` reads for the rows' nodes: full paths for DAG nodes, which are unique.
QStringList Outliner::namesOf(const QModelIndexList& rows) const {
    QStringList names;
    for (const QModelIndex& index : rows) {
        if (index.column() != kNameColumn)
            continue;
        auto found = m_entries.find(nodeOfItem(itemFromIndex(index)));
        if (found == m_entries.end())
            continue;
        if (runtime::NodePtr node = found->second.node.lock())
            names.append(QString::fromStdString(node->fullPathName()));
    }
    return names;
}

} // namespace app
