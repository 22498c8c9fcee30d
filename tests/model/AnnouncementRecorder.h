#pragma once

#include "tests/support/fakes/Journal.h"

#include <QObject>

#include <functional>
#include <memory>

namespace stackreel
{

class AppModel;

/// Records each change of a published property in the journal, with the new value ("trimEnd 20"). Expects one
/// `objectWillChange` before each change, and no other.
class AnnouncementRecorder : public QObject
{
public:
    AnnouncementRecorder(const AppModel& model, std::shared_ptr<Journal> journal);
    ~AnnouncementRecorder() override;

private:
    using Value = std::function<std::string()>;

    void record(void (AppModel::*changed)(), const std::string& property, const Value& value);
    void connectProperties();

    const AppModel& m_model;
    std::shared_ptr<Journal> m_journal;
    int m_announced = 0;
};

} // namespace stackreel
