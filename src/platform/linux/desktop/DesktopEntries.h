#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace vorq {

/// A program as the desktop's menus know it.
struct DesktopEntry {
    /// The name of its file without ".desktop", folders joined by "-".
    QString id;
    /// In the user's language where the file has it.
    QString name;
    QString startupWmClass; ///< "" if the file names none
    QString executable;     ///< the base name of the program that it starts, "" if unknown

    bool operator==(const DesktopEntry&) const = default;
};

/// Reads the text of a desktop file; nothing if it is no application. The language is one of
/// QLocale::name(), such as "de_DE".
[[nodiscard]] std::optional<DesktopEntry> readDesktopEntry(const QString& id, const QString& text,
                                                           const QString& language);

/// The programs that are installed. Files are read when first asked for, and again once a folder
/// has changed. Main thread only.
class DesktopEntries {
  public:
    /// Earlier folders win. The default are the places of the XDG conventions.
    explicit DesktopEntries(QStringList folders = standardFolders());

    [[nodiscard]] static QStringList standardFolders();

    /// Whichever case the id has.
    [[nodiscard]] std::optional<DesktopEntry> withId(const QString& id);

    /// The program whose windows have this class: by what its file says of it, else by its id, else
    /// by the last part of its id, whatever the case.
    [[nodiscard]] std::optional<DesktopEntry> ofWindowClass(const QString& windowClass);

    /// The program that starts an executable of this base name.
    [[nodiscard]] std::optional<DesktopEntry> ofExecutable(const QString& name);

  private:
    void refresh();
    void readFolder(const QString& folder);
    [[nodiscard]] std::optional<DesktopEntry> find(const QHash<QString, std::size_t>& index,
                                                   const QString& key) const;

    QStringList m_folders;
    QStringList m_stamps; // of the folders when they were read
    std::vector<DesktopEntry> m_entries;
    QHash<QString, std::size_t> m_byId;
    QHash<QString, std::size_t> m_byWindowClass;
    QHash<QString, std::size_t> m_byLastPart;
    QHash<QString, std::size_t> m_byExecutable;
};

} // namespace vorq
