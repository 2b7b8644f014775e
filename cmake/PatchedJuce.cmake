# Faults of JUCE 7.0.5, cured at build time. The modules stay where the system has them: in the build stands a folder of
# links to each one's files, with the patched copy in its place.
# SPDX-License-Identifier: GPL-3.0-or-later

# sivray_patch_juce(): replaces the sources of the patched modules. Fails if a file to patch has another form than that of
# JUCE 7.0.5.
function(sivray_patch_juce)
  if(WIN32)
    sivray_patch_windows_windowing()
    # Debian's modules come without their own code for these, and its Windows compiler without the libraries.
    foreach(format PNG JPEG)
      file(READ "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/windows/juce_${format}Loader.cpp" text)
      sivray_replace_file(juce_graphics image_formats juce_${format}Loader.cpp "${text}")
    endforeach()
  else()
    sivray_patch_x11_windowing()
  endif()

  # Clipping one line of a shape copies its edges to a place that may overlap them.
  file(READ "${JUCE_MODULES_DIR}/juce_graphics/geometry/juce_EdgeTable.cpp" text)
  sivray_replace_once(text "memcpy (temp, src1," "memmove (temp, src1,")
  sivray_replace_file(juce_graphics geometry juce_EdgeTable.cpp "${text}")

  sivray_patch_wrappers()
endfunction()

# The wrappers of VST 3 and LV2 spend more on a block than they must. What includes them must include
# <build>/juce before JUCE's own modules.
function(sivray_patch_wrappers)
  # In each block they look at every parameter's flags, of which VST 3 has 2190. One word more, the last, now tells whether
  # any flag is set.
  file(READ "${JUCE_MODULES_DIR}/juce_audio_processors/utilities/juce_FlagCache.h" text)
  sivray_replace_once(text ": flags (divCeil (items, groupsPerWord))" ": flags (divCeil (items, groupsPerWord) + 1)")
  sivray_replace_once(text
    "        flags[flagIndex].fetch_or (moveToGroupPosition (bits, groupIndex), std::memory_order_acq_rel);"
    "        flags[flagIndex].fetch_or (moveToGroupPosition (bits, groupIndex), std::memory_order_acq_rel);\n        flags.back().store (1, std::memory_order_release);")
  sivray_replace_once(text
    "        for (size_t flagIndex = 0; flagIndex < flags.size(); ++flagIndex)\n        {\n            const auto prevFlags"
    "        if (flags.empty() || flags.back().load (std::memory_order_relaxed) == 0)\n            return;\n\n        flags.back().exchange (0, std::memory_order_acq_rel);\n\n        for (size_t flagIndex = 0; flagIndex + 1 < flags.size(); ++flagIndex)\n        {\n            if (flags[flagIndex].load (std::memory_order_relaxed) == 0)\n                continue;\n\n            const auto prevFlags")
  sivray_replace_file(juce_audio_processors utilities juce_FlagCache.h "${text}")

  # A value from the host is told to listeners, all of which know that it came from the host.
  file(READ "${JUCE_MODULES_DIR}/juce_audio_plugin_client/VST3/juce_VST3_Wrapper.cpp" text)
  sivray_replace_once(text
    "    const InParameterChangedCallbackSetter scopedSetter { inParameterChangedCallback };\n    param.setValueNotifyingHost (newValue);"
    "    param.setValue (newValue);")

  # The processor renders into memory of the wrapper's, which is then copied. Where the host has just the stereo bus that all
  # of ours have, it now renders into the host's memory.
  sivray_replace_once(text
    "        ClientRemappedBuffer<FloatType> remappedBuffer { bufferMapper, data };\n        auto& buffer = remappedBuffer.buffer;\n"
    [[        std::optional<ClientRemappedBuffer<FloatType>> remappedBuffer;
        AudioBuffer<FloatType> inPlace;
        const auto rendersInPlace = hasStereoOutputAlone<FloatType> (data);

        if (rendersInPlace)
            inPlace.setDataToReferTo (getAudioBusPointer (detail::Tag<FloatType>{}, data.outputs[0]), 2, data.numSamples);
        else
            remappedBuffer.emplace (bufferMapper, data);

        auto& buffer = rendersInPlace ? inPlace : remappedBuffer->buffer;
]])
  sivray_replace_once(text
    "    template <typename FloatType>\n    void processAudio (Vst::ProcessData& data)\n"
    [[    template <typename FloatType>
    bool hasStereoOutputAlone (const Vst::ProcessData& data) const
    {
        const auto& outputs = bufferMapper.getOutputMap();

        if (! bufferMapper.getInputMap().empty() || outputs.size() != 1 || outputs[0].size() != 2
            || ! outputs[0].isHostActive() || ! outputs[0].isClientActive()
            || data.numOutputs != 1 || data.outputs == nullptr || data.outputs[0].numChannels != 2)
            return false;

        auto* const* channels = getAudioBusPointer (detail::Tag<FloatType>{}, data.outputs[0]);
        return channels != nullptr && channels[0] != nullptr && channels[1] != nullptr;
    }

    template <typename FloatType>
    void processAudio (Vst::ProcessData& data)
]])
  sivray_replace_once(text
    "#include <juce_audio_processors/utilities/juce_FlagCache.h>"
    "#include <juce_audio_processors/utilities/juce_FlagCache.h>\n#include <optional>")
  sivray_replace_file(juce_audio_plugin_client VST3 juce_VST3_Wrapper.cpp "${text}")

  # The same, but the values of a block are told to the processor as its own, which it takes in together; and no search of
  # each parameter for a range that none of ours has. Here too the processor renders into the host's memory. Where it can't,
  # the wrapper's buffer must keep its memory, but not its content, when a block is longer than the last.
  file(READ "${JUCE_MODULES_DIR}/juce_audio_plugin_client/LV2/juce_LV2_Client.cpp" text)
  sivray_replace_once(text
    "                ScopedValueSetter<bool> scope (ignoreCallbacks, true);\n                param->setValueNotifyingHost (scaledValue);"
    "                processor.setParameter (param->getParameterIndex(), scaledValue);")
  sivray_replace_once(text
    "                if (auto* rangedParam = dynamic_cast<RangedAudioParameter*> (param))\n                    return rangedParam->convertTo0to1 (value);\n" "")
  sivray_replace_once(text
    "        const auto it = uridToIndexMap.find (urid);\n\n        if (it == uridToIndexMap.end())"
    "        // Hosts count the names that they are asked for one after another.\n        const auto guess = (size_t) (urid - (indexToUridMap.empty() ? 0 : indexToUridMap.front()));\n        const auto isGuessed = guess < indexToUridMap.size() && indexToUridMap[guess] == urid;\n        const auto it = isGuessed ? uridToIndexMap.end() : uridToIndexMap.find (urid);\n\n        if (! isGuessed && it == uridToIndexMap.end())")
  sivray_replace_once(text
    "legacyParameters.getParamForIndex ((int) it->second))\n        {\n            const auto scaledValue"
    "legacyParameters.getParamForIndex ((int) (isGuessed ? guess : it->second)))\n        {\n            const auto scaledValue")
  sivray_replace_once(text
    "        audio.setSize (audio.getNumChannels(), static_cast<int> (numSteps), true, false, true);\n"
    [[        AudioBuffer<float> inPlace;
        const auto rendersInPlace = processor->getTotalNumInputChannels() == 0 && processor->getTotalNumOutputChannels() == 2
                                     && ports.getBufferForAudioOutput (0) != nullptr
                                     && ports.getBufferForAudioOutput (1) != nullptr;
        auto& audio = rendersInPlace ? inPlace : this->audio;

        if (rendersInPlace)
        {
            float* const outputs[] { ports.getBufferForAudioOutput (0), ports.getBufferForAudioOutput (1) };
            audio.setDataToReferTo (outputs, 2, static_cast<int> (numSteps));
        }
        else
        {
            audio.setSize (audio.getNumChannels(), static_cast<int> (numSteps), false, false, true);
        }
]])
  sivray_replace_once(text
    "            if (dst != nullptr)\n                std::copy (src, src + numSteps, dst);"
    "            if (dst != nullptr && dst != src)\n                std::copy (src, src + numSteps, dst);")

  # Of the host's position, which comes with each block, the processor asks for tempo and transport alone.
  foreach(unused frame bar beat beatUnit beatsPerBar)
    string(REGEX MATCH "{ mLV2_TIME__${unused}, *&atom[A-Za-z]* },[ \n]*" entry "${text}")
    sivray_replace_once(text "${entry}" "")
  endforeach()

  # Hosts that show the parameters ask for their values, and got no answer.
  sivray_replace_once(text
    "            patchSetHelper.processPatchSet (event, Callback { *this });"
    "            patchSetHelper.processPatchSet (event, Callback { *this });\n\n            if (event->body.type == mLV2_ATOM__Object\n                && reinterpret_cast<const LV2_Atom_Object*> (&event->body)->body.otype == mLV2_PATCH__Get)\n                parameters.tellAll();")
  sivray_replace_once(text
    "    struct Options\n    {"
    "    void tellAll()\n    {\n        for (int i = 0; i < legacyParameters.getNumParameters(); ++i)\n            stateCache.setBits ((size_t) i, newClientValue);\n    }\n\n    struct Options\n    {")
  sivray_replace_once(text
    "    X (LV2_PATCH__Set)\n    X (LV2_STATE__StateChanged)"
    "    X (LV2_ATOM__Object)\n    X (LV2_PATCH__Get)\n    X (LV2_PATCH__Set)\n    X (LV2_STATE__StateChanged)")
  sivray_replace_file(juce_audio_plugin_client LV2 juce_LV2_Client.cpp "${text}")
endfunction()

# The window for X11 runs a timer of 60 to 100 Hz for as long as it is open, painted or not: most of a percent of a core for
# a panel that nobody touches. Ours rests while nothing waits to be painted, and its listeners with it.
function(sivray_patch_x11_windowing)
  file(READ "${JUCE_MODULES_DIR}/juce_gui_basics/native/juce_linux_Windowing.cpp" text)
  sivray_replace_once(text
    "regionsNeedingRepaint.add (area * peer.currentScaleFactor);"
    "regionsNeedingRepaint.add (area * peer.currentScaleFactor);\n\n            if (! peer.vBlankManager.isTimerRunning())\n                peer.updateVBlankTimer();")
  sivray_replace_once(text
    "        void performAnyPendingRepaintsNow()\n        {"
    "        bool isIdle() const\n        {\n            return regionsNeedingRepaint.isEmpty() && image.isNull()\n                && XWindowSystem::getInstance()->getNumPaintsPendingForWindow (peer.windowH) == 0;\n        }\n\n        void performAnyPendingRepaintsNow()\n        {")
  sivray_replace_once(text
    "            repainter->dispatchDeferredRepaints();"
    "            repainter->dispatchDeferredRepaints();\n\n        if (repainter == nullptr || repainter->isIdle())\n            vBlankManager.stopTimer();")
  sivray_replace_file(juce_gui_basics native juce_linux_Windowing.cpp "${text}")
endfunction()

# The window for Windows paints when a thread that waits for the screen says so, 60 times a second, painted or not. Where the
# screen cannot be waited for, under Wine, in remote desktops and in virtual machines, it never paints again after the first
# time. Ours paints by a timer, which rests while nothing waits to be painted.
function(sivray_patch_windows_windowing)
  file(READ "${JUCE_MODULES_DIR}/juce_gui_basics/native/juce_win32_Windowing.cpp" text)
  sivray_replace_once(text
    "deferredRepaints.add ((area.toDouble() * getPlatformScaleFactor()).getSmallestIntegerContainer());"
    "deferredRepaints.add ((area.toDouble() * getPlatformScaleFactor()).getSmallestIntegerContainer());\n\n        if (! repaintTimer.isTimerRunning())\n            repaintTimer.startTimerHz (60);")
  sivray_replace_once(text
    "    RectangleList<int> deferredRepaints;"
    "    RectangleList<int> deferredRepaints;\n\n    struct RepaintTimer : public Timer\n    {\n        explicit RepaintTimer (HWNDComponentPeer& p) : peer (p) {}\n\n        void timerCallback() override\n        {\n            stopTimer();\n            peer.onVBlank();\n            peer.performAnyPendingRepaintsNow();  // May delete the peer.\n        }\n\n        HWNDComponentPeer& peer;\n    };\n\n    RepaintTimer repaintTimer { *this };")
  # Nobody waits for the screen.
  sivray_replace_once(text "            VBlankDispatcher::getInstance()->updateDisplay (*this, currentMonitor);" "            {}")
  sivray_replace_once(text "        VBlankDispatcher::getInstance()->removeListener (*this);" "")
  sivray_replace_once(text
    "        auto* dispatcher = VBlankDispatcher::getInstance();\n        dispatcher->reconfigureDisplays();" "")
  sivray_replace_file(juce_gui_basics native juce_win32_Windowing.cpp "${text}")
endfunction()

# sivray_replace_file(<module> <folder> <file> <text>): compiles the module with `text` in place of the file. A module may have
# several files replaced. The module's own folder is `.`.
function(sivray_replace_file module folder file text)
  set(from "${JUCE_MODULES_DIR}/${module}")
  set(to "${PROJECT_BINARY_DIR}/juce/${module}")
  if(IS_SYMLINK "${to}/${folder}")  # From a file replaced in another folder.
    file(REMOVE "${to}/${folder}")
  endif()
  file(MAKE_DIRECTORY "${to}/${folder}")
  file(GLOB entries RELATIVE "${from}" "${from}/*")
  if(folder STREQUAL .)
    list(REMOVE_ITEM entries "${file}")
  else()
    list(REMOVE_ITEM entries "${folder}")
    file(GLOB neighbours RELATIVE "${from}" "${from}/${folder}/*")
    list(APPEND entries ${neighbours})
    list(REMOVE_ITEM entries "${folder}/${file}")
  endif()
  foreach(entry ${entries})
    if(NOT EXISTS "${to}/${entry}" OR IS_SYMLINK "${to}/${entry}")  # Else it holds what was replaced before.
      file(CREATE_LINK "${from}/${entry}" "${to}/${entry}" SYMBOLIC)
    endif()
  endforeach()
  if(IS_SYMLINK "${to}/${folder}/${file}")
    file(REMOVE "${to}/${folder}/${file}")
  endif()
  set(before "")
  if(EXISTS "${to}/${folder}/${file}")
    file(READ "${to}/${folder}/${file}" before)
  endif()
  if(NOT before STREQUAL text)
    file(WRITE "${to}/${folder}/${file}" "${text}")
  endif()

  get_target_property(sources ${module} INTERFACE_SOURCES)
  if(NOT sources)  # Headers and wrappers, which are found by the include path alone.
    return()
  endif()
  list(TRANSFORM sources REPLACE "^${from}/${module}.cpp$" "${to}/${module}.cpp")
  set_target_properties(${module} PROPERTIES INTERFACE_SOURCES "${sources}")
endfunction()

# Replaces `from` by `to` in the text that the variable `name` holds; `from` must stand there exactly once.
function(sivray_replace_once name from to)
  string(FIND "${${name}}" "${from}" first)
  string(FIND "${${name}}" "${from}" last REVERSE)
  if(first EQUAL -1 OR NOT first EQUAL last)
    message(FATAL_ERROR "This JUCE has another form than 7.0.5; see cmake/PatchedJuce.cmake. Not found once: ${from}")
  endif()
  string(REPLACE "${from}" "${to}" result "${${name}}")
  set(${name} "${result}" PARENT_SCOPE)
endfunction()
