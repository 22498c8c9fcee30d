# Adds the parts around the window's content: title bar with menus, frame, about panel.
qt_target_qml_sources(stackreel_ui
  QML_FILES
    AboutPanel.qml
    FrameEdge.qml
    TitleBar.qml
    WindowButton.qml
    WindowFrame.qml
    WindowMenu.qml
    WindowMenuBar.qml
    WindowMenuItem.qml
    WindowMenuSeparator.qml
    WindowMoveArea.qml)
