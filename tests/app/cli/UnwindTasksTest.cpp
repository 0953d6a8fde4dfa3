#include "app/cli/SettleSession.h"
#include "support/async/OnPool.h"

#include <QThread>

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <thread>

namespace vorq {
namespace {

using namespace std::chrono_literals;

// As an accessibility bus with its thread and connections.
TEST(UnwindTasks, WhatLateWorkOwnsIsGoneAfterwards) {
    const auto diedOn = std::make_shared<QThread*>(nullptr);
    std::shared_ptr<int> owned(new int(1), [diedOn](const int* value) {
        *diedOn = QThread::currentThread();
        delete value;
    });
    const std::weak_ptr<int> seen = owned;
    (void)onPool(
        [owned] {
            std::this_thread::sleep_for(200ms);
            return *owned;
        },
        {});
    owned.reset();
    unwindTasks();
    EXPECT_TRUE(seen.expired());
    EXPECT_EQ(*diedOn, QThread::currentThread());
}

} // namespace
} // namespace vorq
