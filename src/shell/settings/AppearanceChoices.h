#pragma once

#include <QObject>
#include <QString>

namespace vorq {

class AppearanceSettings;

/// The looks that the user chooses among, as the settings show them. Each choice counts and is
/// stored at once. Colours are hex strings; "" is the theme's own. Main thread only.
class AppearanceChoices final : public QObject {
    Q_OBJECT
    Q_PROPERTY(Application application READ application WRITE setApplication NOTIFY changed)
    /// The panel's theme: "Light", or else "Dark".
    Q_PROPERTY(bool isPanelLight READ isPanelLight WRITE setPanelLight NOTIFY changed)
    /// The panel's glass: "Tinted", or else "Clear".
    Q_PROPERTY(bool isGlassTinted READ isGlassTinted WRITE setGlassTinted NOTIFY changed)
    Q_PROPERTY(QString background READ background WRITE setBackground NOTIFY changed)
    Q_PROPERTY(QString userBlock READ userBlock WRITE setUserBlock NOTIFY changed)
    Q_PROPERTY(QString assistantBlock READ assistantBlock WRITE setAssistantBlock NOTIFY changed)
    Q_PROPERTY(bool hasCustomColors READ hasCustomColors NOTIFY changed)

  public:
    enum Application { MatchSystem, Light, Dark };
    Q_ENUM(Application)

    /// The settings must outlive the choices.
    explicit AppearanceChoices(AppearanceSettings& settings);

    [[nodiscard]] Application application() const;
    [[nodiscard]] bool isPanelLight() const;
    [[nodiscard]] bool isGlassTinted() const;
    [[nodiscard]] QString background() const;
    [[nodiscard]] QString userBlock() const;
    [[nodiscard]] QString assistantBlock() const;
    [[nodiscard]] bool hasCustomColors() const;

    void setApplication(Application application);
    void setPanelLight(bool isLight);
    void setGlassTinted(bool isTinted);
    void setBackground(const QString& hex);
    void setUserBlock(const QString& hex);
    void setAssistantBlock(const QString& hex);

    /// Gives all three colours back to the theme.
    Q_INVOKABLE void resetColors();
    /// Takes that back, but for what was chosen since.
    Q_INVOKABLE void undoReset();

  signals:
    void changed();
    void colorsReset();

  private:
    struct Colors {
        QString background;
        QString userBlock;
        QString assistantBlock;
    };

    AppearanceSettings& m_settings;
    Colors m_former; // before they were reset
};

} // namespace vorq
