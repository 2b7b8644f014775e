-- Run by try_ardour_outs.py: opens the session that make_outs_session.lua made, leaves one bus alone audible, or all for
-- "all", switches the compressor on or off, and saves the session.
-- SPDX-License-Identifier: GPL-3.0-or-later
local folder, audible, compresses = arg[1], arg[2], arg[3] == "compressed"
AudioEngine:set_backend("None (Dummy)", "", "")
assert(load_session(folder, "hosted"), "no session")
for route in Session:get_routes():iter() do
  local name = route:name()
  if name ~= "Drums" and not route:is_master() and not route:is_monitor() and not route:is_auditioner() then
    local isMuted = audible ~= "all" and name ~= audible
    route:mute_control():set_value(isMuted and 1 or 0, PBD.GroupControlDisposition.NoGroup)
  end
  local effect = route:nth_plugin(0)
  if not effect:isnil() and name ~= "Drums" then
    if compresses then effect:activate() else effect:deactivate() end
  end
end
ARDOUR.LuaAPI.usleep(1000000) -- the host connects the tracks on a thread of its own
Session:save_state("", false, false, false, false, false)
close_session()
