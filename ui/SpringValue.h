#pragma once

#include "ui/geometry/SpringMotion.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace stackreel
{

/// A value that follows its target like a spring. The owner calls `advance` for each frame until the value
/// has settled. Main thread.
class SpringValue : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(double target READ target WRITE setTarget NOTIFY targetChanged FINAL)
    /// Without animation, the value equals the target at once. The first target is never animated.
    Q_PROPERTY(bool animated MEMBER m_animated NOTIFY animatedChanged FINAL)
    Q_PROPERTY(double value READ value NOTIFY valueChanged FINAL)
    Q_PROPERTY(bool settled READ settled NOTIFY settledChanged FINAL)

public:
    explicit SpringValue(QObject* parent = nullptr) : QObject(parent) {}

    double target() const { return m_target; }
    void setTarget(double target);
    double value() const { return m_state.value; }
    bool settled() const { return m_state == SpringState{.value = m_target}; }

    /// Moves the value on by the time since the last frame.
    Q_INVOKABLE void advance(double seconds);

Q_SIGNALS:
    void targetChanged();
    void animatedChanged();
    void valueChanged();
    void settledChanged();

private:
    void setState(const SpringState& state);

    SpringMotion m_motion;
    SpringState m_state;
    double m_target = 0;
    bool m_animated = true;
    bool m_hasTarget = false;
};

} // namespace stackreel
