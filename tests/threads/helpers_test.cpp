#include "threads/helpers.h"

#include <atomic>
#include <gtest/gtest.h>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): <csignal> has no signal masks

namespace {

using threads::Helpers;

void Count(void* count) noexcept {
    ++*static_cast<std::atomic<int>*>(count);
}

TEST(Helpers, EachDoTheWorkOnce) {
    std::atomic<int> count = 0;
    { const Helpers helpers(3, Count, &count); }
    EXPECT_EQ(count, 3);
}

TEST(Helpers, CanBeJoinedEarlier) {
    std::atomic<int> count = 0;
    Helpers helpers(2, Count, &count);
    helpers.Join();
    EXPECT_EQ(count, 2);
    helpers.Join();
    EXPECT_EQ(count, 2);
}

TEST(Helpers, MayBeNone) {
    std::atomic<int> count = 0;
    { const Helpers helpers(0, Count, &count); }
    EXPECT_EQ(count, 0);
}

TEST(Helpers, HaveALargestNumber) {
    std::atomic<int> count = 0;
    { const Helpers helpers(1000, Count, &count); }
    EXPECT_EQ(count, static_cast<int>(Helpers::kMost));
}

void NoteInterrupt(void* blocked) noexcept {
    sigset_t mask;
    pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    *static_cast<int*>(blocked) = sigismember(&mask, SIGINT) + 2 * sigismember(&mask, SIGSEGV);
}

TEST(Helpers, ReceiveNoSignalsOfTheProcess) {
    int own = 0;
    int helpers = 0;
    { const Helpers one(1, NoteInterrupt, &helpers); }
    NoteInterrupt(&own);
    EXPECT_EQ(helpers, 1);
    EXPECT_EQ(own, 0) << "the mask of the calling thread stays as it is";
}

}  // namespace
