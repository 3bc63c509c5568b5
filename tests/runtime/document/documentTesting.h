// documentTesting: what the tests of scene files share: a new, unnamed scene with an empty undo
// queue and a folder of its own for each test, running commands as the application does, and
// a small skinned scene that holds every kind of thing a scene file must keep.
#pragma once

#include "HGlobal.h"
#include "sceneFixture.h"
#include "sceneState.h"

#include <QTemporaryDir>
#include <string>

namespace documenttest {

using fixture::Texts;

class DocumentTest : public fixture::FreshScene {
protected:
    void SetUp() override;
    std::string path(const std::string& name) const;

    QTemporaryDir m_folder;
};

// Runs command text with undo on and display off.
HStatus run(const std::string& text);
std::string stringResult(const std::string& text);

// A leg: joints hip > knee > ankle, a cylinder "leg" bound to them as legCluster with weights
// that do not all sum to one (one vertex 0.25/0.5/1.5, one a subnormal and a third), the
// weight editor's three lock attributes with locks of every kind, knee locked, lockVertex[3]
// on, a group "rig" holding the hip, a dynamic attribute of every kind on the knee (one string
// holding command text, one double NaN), an objectSet of its own, and an empty selection.
void makeLegScene();

// Opens the file with `file -f -o`, which must fail with exactly one error and leave the scene,
// its selection, the undo queue, the scene's name and its modified mark as they were; the error.
std::string openRefusal(const std::string& path);
// The error of a refused file: "Cannot read "PATH": PROBLEM."
std::string readRefusal(const std::string& path, const std::string& problem);

std::string readText(const std::string& path);
void writeText(const std::string& path, const std::string& text);

} // namespace documenttest
