# Adds the views of the window to the QML module that CMakeLists.txt defines.
target_sources(stackreel_ui PRIVATE
  ../BackgroundExportList.cpp ../BackgroundExportList.h
  ../CropEditor.cpp ../CropEditor.h
  ../CursorStack.cpp
  ../DragCursor.cpp ../DragCursor.h
  ../FocusItem.cpp ../FocusItem.h
  ../MotionPreference.cpp ../MotionPreference.h
  ../SpringValue.cpp ../SpringValue.h
  ../ThumbnailPainter.cpp
  ../ThumbnailStrip.cpp ../ThumbnailStrip.h
  ../TimelineEditor.cpp ../TimelineEditor.h
  ../Typefaces.cpp ../Typefaces.h)
find_package(Qt6 6.4 REQUIRED COMPONENTS DBus)
target_link_libraries(stackreel_ui PUBLIC Qt6::DBus)

set(icons
  arrow-up-right-black arrow-up-right-white chevron-up-down pause-fill play-fill speaker-slash speaker-wave stackreel
  window-close window-maximise window-minimise window-restore)
foreach(icon IN LISTS icons)
  set_source_files_properties(../icons/${icon}.svg PROPERTIES QT_RESOURCE_ALIAS icons/${icon}.svg)
  list(APPEND icon_files ../icons/${icon}.svg)
endforeach()

set_source_files_properties(Theme.qml PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
qt_target_qml_sources(stackreel_ui
  QML_FILES
    ActionButton.qml
    Announcement.qml
    AspectPicker.qml
    Caption.qml
    CropOverlay.qml
    DimensionField.qml
    DragArea.qml
    EmptyState.qml
    ExportProgressBar.qml
    FactRow.qml
    FilledActionButton.qml
    FocusRing.qml
    FocusFallback.qml
    FrameSection.qml
    Header.qml
    HoverHint.qml
    Inspector.qml
    MessageText.qml
    Notice.qml
    OnOffSwitch.qml
    OutlineActionButton.qml
    PickerRow.qml
    PreparingState.qml
    ResizeHandle.qml
    ScrolledRows.qml
    SectionTitle.qml
    SoftShadow.qml
    Spinner.qml
    SquareControlButton.qml
    StatusLine.qml
    Theme.qml
    TimelineSlider.qml
    TrimHandle.qml
    TrimTimeline.qml
    VideoCanvas.qml
    Workspace.qml
  RESOURCES ${icon_files})
