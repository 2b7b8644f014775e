-- Run by try_ardour_outs.py: makes a session whose one MIDI track plays "Sivray with outs", fanned out to a bus for each of
-- its port groups as the host's own menu does it, with the host's compressor on one of them.
-- SPDX-License-Identifier: GPL-3.0-or-later
local folder, rate, kit, compressed = arg[1], tonumber(arg[2]), arg[3], arg[4]
AudioEngine:set_backend("None (Dummy)", "", "")
assert(create_session(folder, "hosted", rate), "no session")

local function channels(kind, count) return ARDOUR.ChanCount(ARDOUR.DataType(kind), count) end
local audio = ARDOUR.DataType("audio")
local track = Session:new_midi_track(channels("midi", 1), channels("audio", 2), false, ARDOUR.PluginInfo(), nil, nil, 1, "Drums",
                                     ARDOUR.PresentationInfo.max_order, ARDOUR.TrackMode.Normal, true, true):front()
ARDOUR.LuaAPI.list_plugins() -- makes the host read its scan
local processor = ARDOUR.LuaAPI.new_plugin(Session, "urn:tesh:sivray:outs", ARDOUR.PluginType.LV2, "")
assert(not processor:isnil(), "the host does not list the plug-in")
assert(track:add_processor_by_index(processor, 0, nil, true) == 0, "the track refuses the plug-in")
local insert = processor:to_plugininsert()
local plugin = insert:plugin(0)
local outs = insert:output_streams():n_audio()
print(string.format("%s by %s: %d parameters, %d outputs", plugin:name(), plugin:maker(), plugin:parameter_count(), outs))
local preset = plugin:preset_by_label(kit)
assert(preset and preset.valid and plugin:load_preset(preset), "the host cannot load the kit " .. kit)
ARDOUR.LuaAPI.usleep(1000000) -- the host connects the track on a thread of its own

assert(track:output():n_ports():n_audio() == outs, "the track has other outputs than the plug-in")
-- With the panner on, every bus would hear all pairs mixed.
track:panner_shell():set_bypassed(true)
local buses = {}
for out = 0, outs - 1 do
  local port = track:output():nth(out)
  port:disconnect_all()
  local described = plugin:describe_io_port(audio, false, out)
  local name = described.group_name
  if not buses[name] then
    buses[name] = Session:new_audio_route(2, 2, nil, 1, name, ARDOUR.PresentationInfo.Flag.AudioBus,
                                          ARDOUR.PresentationInfo.max_order):front()
    print("bus " .. name)
  end
  assert(port:connect(buses[name]:input():nth(described.group_channel):name()) == 0, "a port cannot be connected")
end

local compressor = ARDOUR.LuaAPI.new_plugin(Session, "urn:ardour:a-comp#stereo", ARDOUR.PluginType.LV2, "")
assert(not compressor:isnil() and buses[compressed], "no compressor, or nothing to put it on")
assert(buses[compressed]:add_processor_by_index(compressor, 0, nil, true) == 0, "the bus refuses the compressor")
local effect = compressor:to_plugininsert():plugin(0)
for index = 0, effect:parameter_count() - 1 do
  local value = ({ Threshold = -30, Ratio = 8 })[effect:parameter_label(index)]
  if value then ARDOUR.LuaAPI.set_processor_param(compressor, index, value) end
end
ARDOUR.LuaAPI.usleep(1000000)
Session:save_state("", false, false, false, false, false)
close_session()
