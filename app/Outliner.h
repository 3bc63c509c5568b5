// Outliner: the scene's DAG as a tree (transforms, joints, meshes, in the scene's order), with
// the dependency nodes (skin clusters, sets, group ids) in a section of their own after it.
//
// The tree follows the scene's change notices one node at a time (added, removed, renamed,
// reparented, reset) instead of rebuilding itself, and follows the active selection on every
// "SelectionChanged". Selecting in the tree runs `select` through the CommandRunner (echoed and
// undoable): a plain click replaces the selection, Ctrl-click adds or removes one node, and
// clearing the tree's selection runs `select -cl`. When that command fails, the tree shows the
// scene's selection again.
//
// The outliner registers a scene listener and an event callback in its constructor and removes
// them in its destructor, so it must be destroyed while the host runs.
#pragma once

#include "HMessage.h"
#include "scene/Scene.h"

#include <QTreeWidget>
#include <memory>
#include <unordered_map>

class QItemSelection;

namespace app {

class CommandRunner;

class Outliner : public QTreeWidget {
    Q_OBJECT

public:
    enum Column { kNameColumn, kTypeColumn };

    explicit Outliner(CommandRunner& runner, QWidget* parent = nullptr);
    ~Outliner() override;

    // The node's row; null when the tree does not show it.
    QTreeWidgetItem* itemOf(const runtime::Node& node) const;
    // The header row of the dependency nodes.
    QTreeWidgetItem* dependencySection() const { return m_dependencySection; }

private:
    struct Entry {
        std::weak_ptr<runtime::Node> node;
        QTreeWidgetItem* item;
    };

    void sceneChanged(const runtime::SceneChange& change);
    QTreeWidgetItem* addNode(const runtime::NodePtr& node);
    void removeNode(const runtime::Node& node);
    void forget(QTreeWidgetItem* item);
    void place(QTreeWidgetItem* item, const runtime::Node& node);
    void clearNodes();
    void updateSectionVisibility();

    static void selectionChangedInScene(void* self);
    void followSelection();
    void selectInScene(const QItemSelection& selected, const QItemSelection& deselected);
    QStringList namesOf(const QModelIndexList& rows) const;

    CommandRunner& m_runner;
    QTreeWidgetItem* m_dependencySection;
    std::unordered_map<const runtime::Node*, Entry> m_entries;
    runtime::Scene::ListenerId m_listener;
    HCallbackId m_selectionCallback;
    bool m_following = false;
};

} // namespace app
