#pragma once

#include "engine/embedded/search/TextIndex.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vorq::gateway {

enum class WordClass { Other, Noun, Name, Number };

/// A guess at what sort of word each key of a text is, by where it stands: nouns behind articles,
/// names with a capital inside sentences.
class WordClasses {
  public:
    explicit WordClasses(const TextIndex& index);

    [[nodiscard]] WordClass of(std::uint32_t key) const { return m_classes[key]; }
    /// Whether it can be what a text is about.
    [[nodiscard]] bool isThing(std::uint32_t key) const { return m_things[key]; }

    /// Whether it is written somewhere without a capital.
    [[nodiscard]] bool isWrittenSmall(std::uint32_t key) const { return m_small[key]; }

  private:
    struct Evidence {
        std::uint16_t noun = 0;
        std::uint16_t verb = 0;
        std::uint16_t capital = 0;
        std::uint16_t lower = 0;
        bool isKnown = false;
        bool isNamePart = false;
        bool isNumber = false;
        bool isPale = false;
        bool looksLikeVerb = false;
        bool isShort = false;
    };

    void look(std::size_t sentence);
    void lookAtForm(std::size_t sentence, const Word& word, Evidence& evidence) const;
    void lookAtUnspaced(std::size_t sentence, std::size_t place);
    void lookAtRun(std::size_t sentence, std::size_t begin, std::size_t end, bool isDetermined);
    [[nodiscard]] WordClass decide(const Evidence& evidence) const;

    const TextIndex& m_index;
    std::vector<Evidence> m_evidence;
    std::vector<WordClass> m_classes;
    std::vector<bool> m_small;
    std::vector<bool> m_things;
};

} // namespace vorq::gateway
