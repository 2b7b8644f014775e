-- Run by try_ardour.py: makes a session whose one MIDI track plays the plug-in, with a moving parameter.
-- SPDX-License-Identifier: GPL-3.0-or-later
local folder, rate = arg[1], tonumber(arg[2])
local kPad2Level = 13
AudioEngine:set_backend("None (Dummy)", "", "")
assert(create_session(folder, "hosted", rate), "no session")

local midi = ARDOUR.ChanCount(ARDOUR.DataType("midi"), 1)
local stereo = ARDOUR.ChanCount(ARDOUR.DataType("audio"), 2)
local track = Session:new_midi_track(midi, stereo, true, ARDOUR.PluginInfo(), nil, nil, 1, "Drums",
                                     ARDOUR.PresentationInfo.max_order, ARDOUR.TrackMode.Normal, true, true):front()
ARDOUR.LuaAPI.list_plugins() -- makes the host read its scan
local processor = ARDOUR.LuaAPI.new_plugin(Session, "Sivray", ARDOUR.PluginType.LXVST, "")
assert(not processor:isnil(), "the scan does not list the plug-in")
assert(track:add_processor_by_index(processor, 0, nil, true) == 0, "the track refuses the plug-in")

local insert = processor:to_plugininsert()
local plugin = insert:plugin(0)
print(string.format("%s by %s: %d parameters, %d outputs", plugin:name(), plugin:maker(), plugin:parameter_count(),
                    insert:output_streams():n_audio()))
for _, index in ipairs { 0, 1, kPad2Level, 97 } do
  print(index, plugin:parameter_label(index), (ARDOUR.LuaAPI.get_processor_param(processor, index, true)))
end

-- The level of the second pad falls over four seconds.
local _, points = ARDOUR.LuaAPI.plugin_automation(processor, kPad2Level)
for second = 0, 4 do
  points:add(Temporal.timepos_t(second * rate), 0.8 - second * 0.15, false, true)
end
if arg[3] == "automate" then
  local parameter = Evoral.Parameter(ARDOUR.AutomationType.PluginAutomation, 0, kPad2Level)
  processor:to_automatable():automation_control(parameter, false):set_automation_state(ARDOUR.AutoState.Play)
end
Session:save_state("", false, false, false, false, false)
close_session()
