-- Run by try_ardour_outs.py: opens the session that make_outs_session.lua made, leaves one bus alone audible, or all for
-- "all", switches the compressor on or off, and saves the session.
-- SPDX-License-Identifier: GPL-3.0-or-later
local folder, audible, compresses = arg[1], arg[2], arg[3] == "compressed"
AudioEngine:set_backend("None (Dummy)", "", "")
assert(load_session(folder, "hosted"), "no session")
local wanted = {}
for route in Session:get_routes():iter() do
  local name = route:name()
  if name ~= "Drums" and not route:is_master() and not route:is_monitor() and not route:is_auditioner() then
    wanted[route] = audible ~= "all" and name ~= audible
    route:mute_control():set_value(wanted[route] and 1 or 0, PBD.GroupControlDisposition.NoGroup)
    local effect = route:nth_plugin(0)
    if not effect:isnil() then
      if compresses then effect:activate() else effect:deactivate() end
    end
  end
end
-- The host connects the tracks on a thread of its own, and mutes them with a block.
for _ = 1, 100 do
  ARDOUR.LuaAPI.usleep(100000)
  local isDone = true
  for route, isMuted in pairs(wanted) do isDone = isDone and route:muted() == isMuted end
  if isDone then break end
end
ARDOUR.LuaAPI.usleep(1000000)
Session:save_state("", false, false, false, false, false)
close_session()
