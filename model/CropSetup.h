#pragma once

namespace stackreel
{

class AppModel;
struct MediaInfo;

/// Keeps the aspect ratio of the model's two crop regions equal to that of the output's halves. Main thread.
class CropSetup
{
public:
    explicit CropSetup(AppModel& model) : m_model(model) {}

    /// Replaces both regions by the initial pair for a newly loaded source.
    void configureRegions(const MediaInfo& media);
    /// Adapts both regions to the aspect ratio of the output's halves. Does nothing if no source is loaded.
    void adaptRegionsToCurrentOutput();
    /// Calls `adaptRegionsToCurrentOutput` when the output's size is a custom one.
    void customDimensionsChanged();
    /// Exchanges the two regions. The same region stays selected.
    void swapCrops();

private:
    AppModel& m_model;
};

} // namespace stackreel
