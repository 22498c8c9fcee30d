# The window around its content: title strip with menus, frame, about panel.
qt_target_qml_sources(stackreel_ui
  QML_FILES
    AboutPanel.qml
    FrameEdge.qml
    StripMenu.qml
    StripMenuBar.qml
    StripMenuItem.qml
    StripSeparator.qml
    TitleStrip.qml
    WindowButton.qml
    WindowFrame.qml
    WindowMoveArea.qml)
