-- Run by try_ardour_forms.py: makes a session whose one MIDI track plays the plug-in in the form LV2 or VST3, with LV2 a kit.
-- SPDX-License-Identifier: GPL-3.0-or-later
local folder, rate, form, kit = arg[1], tonumber(arg[2]), arg[3], arg[4]
AudioEngine:set_backend("None (Dummy)", "", "")
assert(create_session(folder, "hosted", rate), "no session")

local midi = ARDOUR.ChanCount(ARDOUR.DataType("midi"), 1)
local stereo = ARDOUR.ChanCount(ARDOUR.DataType("audio"), 2)
local track = Session:new_midi_track(midi, stereo, true, ARDOUR.PluginInfo(), nil, nil, 1, "Drums",
                                     ARDOUR.PresentationInfo.max_order, ARDOUR.TrackMode.Normal, true, true):front()
ARDOUR.LuaAPI.list_plugins() -- makes the host read its scan
local name = form == "LV2" and "urn:tesh:sivray" or "Sivray"
local processor = ARDOUR.LuaAPI.new_plugin(Session, name, ARDOUR.PluginType[form], "")
assert(not processor:isnil(), "the host does not list the plug-in")
assert(track:add_processor_by_index(processor, 0, nil, true) == 0, "the track refuses the plug-in")

local insert = processor:to_plugininsert()
local plugin = insert:plugin(0)
print(string.format("%s by %s: %d parameters, %d outputs", plugin:name(), plugin:maker(), plugin:parameter_count(),
                    insert:output_streams():n_audio()))
local preset = plugin:preset_by_label(kit)
assert(preset and preset.valid, "the host does not list the kit " .. kit)
if form == "LV2" then -- of VST 3 it needs its window's timers, or writes old values over the program's
  assert(plugin:load_preset(preset), "the host cannot load the kit")
end
ARDOUR.LuaAPI.usleep(1000000) -- the host connects the track on a thread of its own
Session:save_state("", false, false, false, false, false)
close_session()
