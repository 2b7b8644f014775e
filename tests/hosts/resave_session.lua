-- Run by try_ardour.py and try_ardour_forms.py: opens a session, moves a parameter of its plug-in where one is given, and
-- saves it.
-- SPDX-License-Identifier: GPL-3.0-or-later
AudioEngine:set_backend("None (Dummy)", "", "")
assert(load_session(arg[1], "hosted"), "no session")
local processor = Session:route_by_name("Drums"):nth_plugin(0)
if arg[2] then
  ARDOUR.LuaAPI.set_processor_param(processor, tonumber(arg[2]), tonumber(arg[3]))
  ARDOUR.LuaAPI.usleep(500000) -- a VST 3 plug-in gets it with a block
end
ARDOUR.LuaAPI.usleep(1000000) -- the host connects the track on a thread of its own
Session:save_state("", false, false, false, false, false)
close_session()
