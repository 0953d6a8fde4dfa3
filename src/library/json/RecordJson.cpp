#include "library/json/RecordJson.h"

namespace vorq {

void write(JsonWriter& writer, const QUuid& id) {
    static constexpr char hex[] = "0123456789ABCDEF";
    const QByteArray bytes = id.toRfc4122();
    std::array<char, 36> text{};
    std::size_t at = 0;
    for (qsizetype index = 0; index < bytes.size(); ++index) {
        if (index == 4 || index == 6 || index == 8 || index == 10) text[at++] = '-';
        const auto byte = static_cast<unsigned char>(bytes[index]);
        text[at++] = hex[byte >> 4];
        text[at++] = hex[byte & 0xF];
    }
    writer.plainString(QByteArrayView(text.data(), text.size()));
}

void writeObject(JsonWriter& writer, std::span<const Field> fields, const void* record) {
    writer.beginObject();
    for (const Field& field : fields) {
        if (field.write != nullptr) field.write(writer, field.key, record);
    }
    writer.endObject();
}

} // namespace vorq
