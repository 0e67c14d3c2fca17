#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

#include "headless/testing.h"
#include "tests/headless/operation_calls.h"
#include "tests/headless/scene_text.h"

using namespace host_test;

namespace {

using Faults = HostScene;

TEST_F(Faults, CanBeMadeInEveryOperation) {
    const auto& operations = headless::FaultyOperations();
    for (const std::string_view operation : operations)
        EXPECT_TRUE(std::any_of(OperationCallsOfAllKinds().begin(),
                                OperationCallsOfAllKinds().end(),
                                [&](const auto& row) { return row.operation == operation; }))
            << operation;
    for (const OperationCall& row : OperationCallsOfAllKinds())
        EXPECT_THAT(operations, testing::Contains(row.operation));
}

TEST_F(Faults, FailOnceAndChangeNothing) {
    for (const OperationCall& row : OperationCallsOfAllKinds()) {
        headless::Session::Current().Reset();
        Handles handles;
        handles.Make();
        const std::wstring scene = SceneText();
        const std::size_t log = headless::Session::Current().Log().size();
        const std::size_t bar = headless::Session::Current().Bar().size();
        const std::uint64_t calls = headless::OperationCalls(row.operation);
        headless::FailOperation(row.operation, 1);
        EXPECT_FALSE(row.call(handles)) << row.operation;
        EXPECT_GT(headless::OperationCalls(row.operation), calls) << row.operation;
        EXPECT_EQ(SceneText(), scene) << row.operation;
        EXPECT_EQ(headless::Session::Current().Log().size(), log) << row.operation;
        EXPECT_EQ(headless::Session::Current().Bar().size(), bar) << row.operation;
        EXPECT_TRUE(row.call(handles)) << row.operation << " works again";
    }
}

TEST_F(Faults, HitTheCallTheyWereSetFor) {
    const Zelk::Model model = AddModel(L"Skel");
    AddNull(model, L"a");
    headless::FailOperation("AddNull", 3);
    EXPECT_TRUE(AddNull(model, L"b").IsValid());
    EXPECT_TRUE(AddNull(model, L"c").IsValid());
    EXPECT_FALSE(AddNull(model, L"d").IsValid());
    EXPECT_TRUE(AddNull(model, L"d").IsValid());
    EXPECT_EQ(headless::OperationCalls("AddNull"), 5u);
}

TEST_F(Faults, ReplaceEachOtherAndCanBeRemoved) {
    const Zelk::Model model = AddModel(L"Skel");
    headless::FailOperation("AddNull", 1);
    headless::FailOperation("AddNull", 2);
    EXPECT_TRUE(AddNull(model, L"a").IsValid());
    EXPECT_FALSE(AddNull(model, L"a").IsValid());
    headless::FailOperation("AddNull", 1);
    headless::FailOperation("AddNull", 0);
    EXPECT_TRUE(AddNull(model, L"a").IsValid());
    headless::FailOperation("AddNull", 1);
    headless::ClearFaults();
    EXPECT_TRUE(AddNull(model, L"a").IsValid());
    EXPECT_EQ(headless::OperationCalls("AddNull"), 4u) << "the count goes on";
    headless::FailOperation("AddNull", 1);
    headless::Session::Current().Reset();
    EXPECT_EQ(headless::OperationCalls("AddNull"), 0u);
    EXPECT_TRUE(AddNull(SceneRoot(), L"a").IsValid());
}

TEST_F(Faults, AreRecordedWhereTheyHitCommands) {
    for (const char* operation : {"ExecuteCommand", "DeleteObj"}) {
        const Zelk::Null null = AddNull(SceneRoot(), L"Hips");
        headless::FailOperation(operation, 1);
        EXPECT_EQ(Delete(L"Hips"), Zelk::status::kFail);
        EXPECT_TRUE(null.IsValid());
        EXPECT_EQ(headless::Session::Current().Commands().back().status, Zelk::status::kFail);
        EXPECT_EQ(Delete(L"Hips"), Zelk::status::kOk);
    }
    EXPECT_EQ(headless::OperationCalls("ExecuteCommand"), 4u);
    EXPECT_EQ(headless::OperationCalls("DeleteObj"), 3u);
}

TEST_F(Faults, AreRefusedForOtherNames) {
    for (const char* name : {"", "addnull", "AddNull ", "Count"}) {
        EXPECT_THROW(headless::FailOperation(name, 1), std::invalid_argument) << name;
        EXPECT_THROW(headless::OperationCalls(name), std::invalid_argument) << name;
    }
}

}  // namespace
