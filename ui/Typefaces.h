#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace stackreel
{

/// The families the window is set in, as far as they are installed; otherwise the system's own.
class Typefaces : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString text READ text CONSTANT FINAL)
    /// Rounded and heavy, for titles.
    Q_PROPERTY(QString title READ title CONSTANT FINAL)
    /// All characters of one width.
    Q_PROPERTY(QString fixed READ fixed CONSTANT FINAL)

public:
    static QString text();
    static QString title();
    static QString fixed();
};

} // namespace stackreel
