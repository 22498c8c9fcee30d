#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace stackreel
{

/// The font families of the window. A family that is not installed is replaced by the system's font.
class Typefaces : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString text READ text CONSTANT FINAL)
    /// A family with rounded letters, for titles.
    Q_PROPERTY(QString title READ title CONSTANT FINAL)
    /// A monospaced family.
    Q_PROPERTY(QString fixed READ fixed CONSTANT FINAL)

public:
    static QString text();
    static QString title();
    static QString fixed();
};

} // namespace stackreel
