# Sources of JUCE that nothing of ours uses: a quarter of its code, and of the time that it takes to compile. The linker would
# leave them out as well. Whoever comes to use one meets an undefined symbol, and takes its file out of these lists.
# SPDX-License-Identifier: GPL-3.0-or-later

# sivray_trim_juce(): leaves the sources out. To be called after the last file of a module has been replaced. Windows' own
# code uses others, and is not built as often.
function(sivray_trim_juce)
  sivray_leave_out(juce_core
    logging/juce_FileLogger.cpp
    maths/juce_Expression.cpp
    text/juce_TextDiff.cpp
    unit_tests/juce_UnitTest.cpp
    javascript/juce_Javascript.cpp
    zip/juce_ZipFile.cpp
    native/juce_android_AndroidDocument.cpp)  # Of all systems, in spite of its name.
  sivray_leave_out(juce_events
    interprocess/juce_InterprocessConnection.cpp
    interprocess/juce_InterprocessConnectionServer.cpp
    interprocess/juce_ConnectedChildProcess.cpp
    interprocess/juce_NetworkServiceDiscovery.cpp)
  sivray_leave_out(juce_graphics
    contexts/juce_LowLevelGraphicsPostScriptRenderer.cpp
    images/juce_ImageConvolutionKernel.cpp
    effects/juce_GlowEffect.cpp)
  sivray_leave_out(juce_gui_basics
    buttons/juce_ArrowButton.cpp
    buttons/juce_HyperlinkButton.cpp
    buttons/juce_ImageButton.cpp
    buttons/juce_ShapeButton.cpp
    buttons/juce_ToolbarButton.cpp
    filebrowser/juce_ContentSharer.cpp
    filebrowser/juce_FilenameComponent.cpp
    filebrowser/juce_FileSearchPathListComponent.cpp
    filebrowser/juce_FileTreeComponent.cpp
    filebrowser/juce_ImagePreviewComponent.cpp
    layout/juce_ComponentBuilder.cpp
    layout/juce_FlexBox.cpp
    layout/juce_Grid.cpp
    layout/juce_GridItem.cpp
    layout/juce_GroupComponent.cpp
    layout/juce_MultiDocumentPanel.cpp
    layout/juce_ResizableEdgeComponent.cpp
    layout/juce_SidePanel.cpp
    layout/juce_StretchableLayoutManager.cpp
    layout/juce_StretchableLayoutResizerBar.cpp
    layout/juce_TabbedComponent.cpp
    lookandfeel/juce_LookAndFeel_V1.cpp
    menus/juce_BurgerMenuComponent.cpp
    mouse/juce_MouseInactivityDetector.cpp
    positioning/juce_MarkerList.cpp
    positioning/juce_RelativeCoordinate.cpp
    positioning/juce_RelativeCoordinatePositioner.cpp
    positioning/juce_RelativeParallelogram.cpp
    positioning/juce_RelativePoint.cpp
    positioning/juce_RelativePointPath.cpp
    positioning/juce_RelativeRectangle.cpp
    properties/juce_BooleanPropertyComponent.cpp
    properties/juce_ButtonPropertyComponent.cpp
    properties/juce_ChoicePropertyComponent.cpp
    properties/juce_MultiChoicePropertyComponent.cpp
    properties/juce_PropertyComponent.cpp
    properties/juce_PropertyPanel.cpp
    properties/juce_SliderPropertyComponent.cpp
    properties/juce_TextPropertyComponent.cpp
    widgets/juce_TableListBox.cpp
    widgets/juce_Toolbar.cpp
    widgets/juce_ToolbarItemComponent.cpp
    widgets/juce_ToolbarItemPalette.cpp
    widgets/juce_TreeView.cpp
    windows/juce_CallOutBox.cpp
    windows/juce_DialogWindow.cpp
    windows/juce_ThreadWithProgressWindow.cpp
    windows/juce_TooltipWindow.cpp)
  # The look of a combo box asks whether it stands among properties.
  file(READ "${JUCE_MODULES_DIR}/juce_gui_basics/lookandfeel/juce_LookAndFeel_V4.cpp" text)
  sivray_replace_once(text "box.findParentComponentOfClass<ChoicePropertyComponent>() != nullptr ? 0.0f : 3.0f" "3.0f")
  sivray_replace_file(juce_gui_basics lookandfeel juce_LookAndFeel_V4.cpp "${text}")
  # Its file browser shows a tree to those who ask for one; they get the list.
  file(READ "${JUCE_MODULES_DIR}/juce_gui_basics/filebrowser/juce_FileBrowserComponent.cpp" text)
  sivray_replace_once(text
    "    if ((flags & useTreeView) != 0)\n    {\n        auto tree = new FileTreeComponent (*fileList);\n        fileListComponent.reset (tree);\n\n        if ((flags & canSelectMultipleItems) != 0)\n            tree->setMultiSelectEnabled (true);\n\n        addAndMakeVisible (tree);\n    }\n    else\n"
    "")
  sivray_replace_once(text
    "    if (auto* tree = dynamic_cast<FileTreeComponent*> (fileListComponent.get()))\n        tree->refresh();\n" "")
  sivray_replace_file(juce_gui_basics filebrowser juce_FileBrowserComponent.cpp "${text}")

  sivray_leave_out(juce_audio_basics
    buffers/juce_AudioDataConverters.cpp
    buffers/juce_AudioProcessLoadMeasurer.cpp
    midi/juce_MidiKeyboardState.cpp
    midi/juce_MidiRPN.cpp
    mpe/juce_MPEInstrument.cpp
    mpe/juce_MPEMessages.cpp
    mpe/juce_MPENote.cpp
    mpe/juce_MPESynthesiser.cpp
    mpe/juce_MPESynthesiserBase.cpp
    mpe/juce_MPESynthesiserVoice.cpp
    mpe/juce_MPEUtils.cpp
    mpe/juce_MPEValue.cpp
    mpe/juce_MPEZoneLayout.cpp
    sources/juce_BufferingAudioSource.cpp
    sources/juce_ChannelRemappingAudioSource.cpp
    sources/juce_IIRFilterAudioSource.cpp
    sources/juce_MemoryAudioSource.cpp
    sources/juce_MixerAudioSource.cpp
    sources/juce_ResamplingAudioSource.cpp
    sources/juce_ReverbAudioSource.cpp
    sources/juce_ToneGeneratorAudioSource.cpp
    synthesisers/juce_Synthesiser.cpp
    utilities/juce_IIRFilter.cpp
    utilities/juce_Interpolators.cpp
    utilities/juce_LagrangeInterpolator.cpp
    utilities/juce_SmoothedValue.cpp
    utilities/juce_WindowedSincInterpolator.cpp)
  sivray_leave_out(juce_audio_formats
    format/juce_AudioFormatReaderSource.cpp
    format/juce_BufferingAudioFormatReader.cpp
    sampler/juce_Sampler.cpp)
  sivray_leave_out(juce_audio_devices
    audio_io/juce_AudioDeviceManager.cpp
    sources/juce_AudioSourcePlayer.cpp
    sources/juce_AudioTransportSource.cpp)
  sivray_leave_out(juce_audio_processors
    processors/juce_AudioProcessorGraph.cpp
    processors/juce_GenericAudioProcessorEditor.cpp
    scanning/juce_KnownPluginList.cpp
    scanning/juce_PluginDirectoryScanner.cpp
    scanning/juce_PluginListComponent.cpp
    utilities/juce_AudioProcessorValueTreeState.cpp
    utilities/juce_ParameterAttachments.cpp)
  sivray_leave_out(juce_gui_extra
    documents/juce_FileBasedDocument.cpp
    code_editor/juce_CodeDocument.cpp
    code_editor/juce_CodeEditorComponent.cpp
    code_editor/juce_CPlusPlusCodeTokeniser.cpp
    code_editor/juce_LuaCodeTokeniser.cpp
    code_editor/juce_XMLCodeTokeniser.cpp
    misc/juce_AnimatedAppComponent.cpp
    misc/juce_BubbleMessageComponent.cpp
    misc/juce_ColourSelector.cpp
    misc/juce_KeyMappingEditorComponent.cpp
    misc/juce_LiveConstantEditor.cpp
    misc/juce_PreferencesPanel.cpp
    misc/juce_PushNotifications.cpp
    misc/juce_RecentlyOpenedFilesList.cpp
    misc/juce_SplashScreen.cpp
    misc/juce_SystemTrayIconComponent.cpp
    misc/juce_WebBrowserComponent.cpp
    native/juce_linux_X11_SystemTrayIcon.cpp)
endfunction()

# sivray_leave_out(<module> <file>...): compiles the module without these sources of it.
function(sivray_leave_out module)
  file(READ "${JUCE_MODULES_DIR}/${module}/${module}.cpp" text)
  foreach(file ${ARGN})
    sivray_replace_once(text "#include \"${file}\"" "")
  endforeach()
  sivray_replace_file(${module} . ${module}.cpp "${text}")
endfunction()
