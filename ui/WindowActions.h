#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace stackreel
{

/// The menu commands that the model does not handle. The application connects them. Main thread.
class WindowActions : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application owns the actions.")

    Q_PROPERTY(QString version READ version CONSTANT FINAL)
    /// Whether the user works in an open or save panel. The window's shortcuts do nothing then.
    Q_PROPERTY(bool panelFocused READ panelFocused WRITE setPanelFocused NOTIFY panelFocusedChanged FINAL)

public:
    /// `checkForUpdates` is called each time the user requests a check for updates. It may be empty.
    explicit WindowActions(std::function<void()> checkForUpdates = {}, QObject* parent = nullptr);

    QString version() const; ///< of the program

    bool panelFocused() const { return m_panelFocused; }
    void setPanelFocused(bool focused);

    Q_INVOKABLE void checkForUpdates() const;
    /// Called when the user quits by the menu, by its shortcut, or by closing the window. Emits
    /// `quitRequested`.
    Q_INVOKABLE void quit() { Q_EMIT quitRequested(); }

Q_SIGNALS:
    void quitRequested();
    void panelFocusedChanged();

private:
    std::function<void()> m_checkForUpdates;
    bool m_panelFocused = false;
};

} // namespace stackreel
