#include "HEventMessage.h"
#include "HMessage.h"
#include "HStringArray.h"
#include "core/EventBus.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

struct Recorder {
    std::vector<std::string> calls;
    HCallbackId other = 0;
};

void recordA(void* data) {
    static_cast<Recorder*>(data)->calls.push_back("a");
}
void recordB(void* data) {
    static_cast<Recorder*>(data)->calls.push_back("b");
}
void removeOther(void* data) {
    Recorder* recorder = static_cast<Recorder*>(data);
    recorder->calls.push_back("remover");
    HMessage::removeCallback(recorder->other);
}

void fire(const char* name) {
    runtime::host().get<runtime::EventBus>().fire(name);
}

} // namespace

TEST(EventCallbacks, RunInTheOrderAddedUntilRemoved) {
    Recorder recorder;
    HStatus status;
    HCallbackId a = HEventMessage::addEventCallback("SceneSaved", recordA, &recorder, &status);
    ASSERT_TRUE(static_cast<bool>(status));
    HCallbackId b = HEventMessage::addEventCallback("SceneSaved", recordB, &recorder);
    fire("SceneSaved");
    EXPECT_EQ(recorder.calls, (std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(static_cast<bool>(HMessage::removeCallback(a)));
    fire("SceneSaved");
    EXPECT_EQ(recorder.calls, (std::vector<std::string>{"a", "b", "b"}));
    EXPECT_TRUE(static_cast<bool>(HMessage::removeCallback(b)));
    EXPECT_EQ(HMessage::removeCallback(b).statusCode(), HS::kInvalidParameter);
}

TEST(EventCallbacks, RemovedDuringDispatchIsNotCalledAgain) {
    Recorder recorder;
    HCallbackId remover = HEventMessage::addEventCallback("Undo", removeOther, &recorder);
    recorder.other = HEventMessage::addEventCallback("Undo", recordA, &recorder);
    fire("Undo");
    EXPECT_EQ(recorder.calls, (std::vector<std::string>{"remover"}));
    HMessage::removeCallback(remover);
}

TEST(EventCallbacks, UnknownEventsAndMissingFunctionsAreRefused) {
    HStatus status;
    EXPECT_EQ(HEventMessage::addEventCallback("NoSuchEvent", recordA, nullptr, &status), 0u);
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    EXPECT_EQ(HEventMessage::addEventCallback("Redo", nullptr, nullptr, &status), 0u);
    EXPECT_EQ(status.statusCode(), HS::kInvalidParameter);
    HStringArray names;
    HEventMessage::getEventNames(names);
    EXPECT_EQ(names.length(), 6u);
}
