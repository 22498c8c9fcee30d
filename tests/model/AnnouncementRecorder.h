#pragma once

#include "tests/support/fakes/Journal.h"

#include <QObject>

#include <functional>
#include <memory>

namespace stackreel
{

class AppModel;

/// Writes each change of a published property into the journal, with the value it has then ("trimEnd 20"),
/// and expects that each was announced exactly once before, and that nothing else was.
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
