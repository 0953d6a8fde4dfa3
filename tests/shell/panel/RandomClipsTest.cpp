// Whatever the user and the reader do, in whatever order: clips keep the order in which they were
// chosen, no clip is lost, none goes out that is not read, and no reading outlives its clip.

#include "doubles/panel/ClipsFixture.h"
#include "shell/panel/ClipLoader.h"

#include <algorithm>
#include <random>

namespace vorq {
namespace {

constexpr unsigned clipSequences = 120;
constexpr int clipSteps = 60;

class RandomClipsTest : public ClipsFixture {
  protected:
    void run(unsigned seed) {
        m_random.seed(seed);
        m_story = "sequence " + std::to_string(seed) + ":";
        for (int step = 0; step < clipSteps && !HasFailure(); ++step) {
            doAnything();
            m_clock.settle();
            check();
        }
        model().waiting()->cancel();
        while (clips().count() > 0)
            remove(0);
        m_chosen.clear();
        EXPECT_EQ(m_reader.underWay(), 0) << m_story;
    }

  private:
    std::size_t below(std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(m_random);
    }
    void doAnything() {
        switch (below(9)) {
        case 0:
        case 1:
            return chooseSome();
        case 2:
        case 3:
            return endReading(true);
        case 4:
            return endReading(false);
        case 5:
            return removeOne();
        case 6:
            m_story += " retry";
            return clips().retry(
                static_cast<int>(below(static_cast<std::size_t>(m_chosen.size()) + 1)));
        case 7:
            m_story += " send";
            return model().send();
        default:
            m_story += " wait-no-more";
            return model().waiting()->cancel();
        }
    }
    void chooseSome() {
        QStringList names;
        for (std::size_t number = below(4); number > 0; --number)
            names += QString::number(++m_last);
        m_story += " choose-" + std::to_string(names.size());
        m_chosen += names;
        choose(names);
    }
    void endReading(bool isGood) {
        std::vector<std::size_t> open;
        for (std::size_t number = 0; number < m_reader.readings().size(); ++number)
            if (m_reader.readings()[number]->isUnderWay()) open.push_back(number);
        if (open.empty()) return;
        const std::size_t number = open[below(open.size())];
        m_story += isGood ? " read" : " fail";
        if (isGood)
            m_reader.finish(number);
        else
            m_reader.fail(number, "it is locked");
    }
    void removeOne() {
        if (m_chosen.isEmpty()) return;
        const auto row = static_cast<qsizetype>(below(static_cast<std::size_t>(m_chosen.size())));
        m_story += " remove";
        m_chosen.removeAt(row);
        clips().removeAt(static_cast<int>(row));
    }

    void check() {
        const std::vector<std::string> bubbles = said();
        if (bubbles.size() > m_sent) {
            ASSERT_EQ(bubbles.size(), m_sent + 1) << m_story;
            EXPECT_EQ(bubbles.back(), "Attached: " + m_chosen.join(", ").toStdString())
                << m_story << ": all go out, or none";
            m_sent = bubbles.size();
            m_chosen.clear();
        }
        QStringList names;
        long loading = 0;
        for (const PromptClip& clip : clips().clips()) {
            names += clip.attachment.fileName;
            loading += clip.state == PromptClip::State::Loading ? 1 : 0;
        }
        EXPECT_EQ(names.join(u' ').toStdString(), m_chosen.join(u' ').toStdString()) << m_story;
        EXPECT_EQ(m_reader.underWay(), std::min<long>(loading, ClipLoader::mostAtOnce)) << m_story;
        EXPECT_EQ(
            static_cast<long>(clips().attachments().size()),
            std::ranges::count(clips().clips(), PromptClip::State::Ready, &PromptClip::state));
        if (model().waiting()->isWaiting()) EXPECT_GT(loading, 0) << m_story;
    }

    std::mt19937 m_random;
    std::string m_story;
    QStringList m_chosen; // what the user would say is attached
    int m_last = 0;
    std::size_t m_sent = 0;
};

TEST_F(RandomClipsTest, NothingIsLostAndNothingGoesOutUnread) {
    for (unsigned seed = 1; seed <= clipSequences && !HasFailure(); ++seed)
        run(seed);
    EXPECT_GT(said().size(), clipSequences / 4) << "the sequences send at all";
}

} // namespace
} // namespace vorq
