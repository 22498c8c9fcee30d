#include "model/CropSetup.h"

#include "model/AppModel.h"

namespace stackreel
{

void CropSetup::configureRegions(const MediaInfo& media)
{
    const auto [top, bottom] =
        CropRegion::initialPair(media.displayAspect(), panelAspect(m_model.settings().size()));
    m_model.setTopRegion(top);
    m_model.setBottomRegion(bottom);
}

void CropSetup::adaptRegionsToCurrentOutput()
{
    if (!m_model.mediaInfo())
        return;
    const double sourceAspect = m_model.mediaInfo()->displayAspect();
    m_model.setTopRegion(
        m_model.topRegion().adaptingAspect(sourceAspect, panelAspect(m_model.settings().size())));
    // Compute the panel aspect again: a slot that is connected to the first change may have changed the
    // settings.
    m_model.setBottomRegion(
        m_model.bottomRegion().adaptingAspect(sourceAspect, panelAspect(m_model.settings().size())));
}

void CropSetup::customDimensionsChanged()
{
    if (m_model.settings().aspect == OutputAspect::custom)
        adaptRegionsToCurrentOutput();
}

void CropSetup::swapCrops()
{
    const CropRegion top = m_model.topRegion();
    const CropRegion bottom = m_model.bottomRegion();
    m_model.setTopRegion(bottom);
    m_model.setBottomRegion(top);
    m_model.setSelectedCrop(m_model.selectedCrop() == 0 ? 1 : 0);
}

} // namespace stackreel
