#include "storage/Database.h"

namespace vorq::gateway {

Statement& Statement::bind(int index, std::int64_t value) {
    m_cursor->bindInteger(index, value);
    return *this;
}

Statement& Statement::bind(int index, std::string_view text) {
    m_cursor->bindText(index, text);
    return *this;
}

Statement& Statement::bindBlob(int index, std::string_view bytes) {
    m_cursor->bindBlob(index, bytes);
    return *this;
}

Statement& Statement::bindNull(int index) {
    m_cursor->bindNull(index);
    return *this;
}

std::string Statement::text(int column) const {
    return optionalText(column).value_or("");
}

std::optional<std::string> Statement::optionalText(int column) const {
    return m_cursor->optionalText(column);
}

Transaction::Transaction(Database& database) : m_database(database) {
    m_database.begin();
}

Transaction::~Transaction() {
    if (!m_open) return;
    try {
        m_database.rollback();
    } catch (const DatabaseError&) {
        m_open = false; // The database has rolled back by itself.
    }
}

void Transaction::commit() {
    m_database.commit();
    m_open = false;
}

} // namespace vorq::gateway
