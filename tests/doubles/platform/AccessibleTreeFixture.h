#pragma once

#include "doubles/platform/PrivateBus.h"
#include "doubles/platform/ScriptedAccessibleTree.h"
#include "platform/linux/atspi/AtSpiBus.h"
#include "platform/linux/atspi/AtSpiText.h"

#include <QTest>

#include <gtest/gtest.h>

#include <chrono>
#include <future>

namespace vorq {

/// An application of scripted elements on an accessibility bus of the test's own.
class AccessibleTreeTest : public testing::Test {
  protected:
    AccessibleTreeTest() {
        m_server.registerVirtualObject("/", &tree, QDBusConnection::SubPath);
        m_server.registerService("org.a11y.Bus");
        EXPECT_TRUE(QTest::qWaitFor([&] { return bus.isOn(); }));
    }

    // Asks from another thread, since the application answers on this one.
    template<typename Question>
    auto told(Question question) {
        auto answer = std::async(std::launch::async, question);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready; },
            20'000));
        return answer.get();
    }

    [[nodiscard]] AtSpiRef at(const QString& path) const { return {m_server.baseService(), path}; }

    ScriptedTreeElement& element(const QString& path) { return tree.elements[path]; }
    // A text of one selected stretch.
    ScriptedTreeElement& textOf(const QString& path, const QString& text, int start, int end) {
        ScriptedTreeElement& one = element(path);
        one.text = text;
        one.selections = {{start, end}};
        return one;
    }
    // A text all of which is selected.
    ScriptedTreeElement& whole(const QString& path, const QString& text) {
        return textOf(path, text, 0, static_cast<int>(text.size()));
    }

    PrivateBus m_bus;
    ScriptedAccessibleTree tree{m_bus.address()};
    QDBusConnection m_server = m_bus.connection("accessible-tree");
    // None of these tests is about a limit, and a busy machine answers late.
    AtSpiBus bus{m_bus.address(), std::chrono::seconds(20)};
    AtSpiToolkit toolkit = atSpiToolkit(u"Gecko", u"Firefox");
};

} // namespace vorq
