// Any bytes as RTF: whatever is read of them must come back when it is written and read again.

#include "library/rtf/RtfReader.h"
#include "library/rtf/RtfWriter.h"

#include <cstdint>
#include <cstdlib>

namespace {

using namespace vorq;

void require(bool holds) {
    if (!holds) std::abort();
}

void checkRuns(const NoteRichText& text) {
    qsizetype length = 0;
    const NoteAttributes* former = nullptr;
    for (const NoteRichText::Run& run : text.runs()) {
        require(run.length > 0 && (!former || *former != run.attributes));
        former = &run.attributes;
        length += run.length;
    }
    require(length == text.length());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::optional<NoteRichText> read =
        readRtf({reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)});
    if (!read) return 0;
    checkRuns(*read);
    // Writing cuts measures that are out of bounds; what it has written stays as it is.
    const std::optional<NoteRichText> once = readRtf(writeRtf(*read));
    require(once && once->text() == read->text());
    require(readRtf(writeRtf(*once)) == once);
    return 0;
}
