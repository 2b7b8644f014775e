// A replacement for ALSA's sequencer, which needs a kernel module. Loaded by LD_PRELOAD, it has one device, "Test
// Keys", which sends the notes on the pipe SIVRAY_TEST_KEYS, three bytes each.
// SPDX-License-Identifier: GPL-3.0-or-later
#include <alsa/asoundlib.h>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>

namespace {

constexpr int kProgramClient = 128;
constexpr int kDeviceClient = 20;
constexpr int kProgramPort = 0;

int pipeEnd = -1;
bool isListed = false;      ///< Whether the current query of clients has listed the device.
bool isPortListed = false;  ///< Whether the current query of ports has listed its port.
bool isConnected = false;
snd_seq_event_t event;

}  // namespace

extern "C" {

int snd_seq_open(snd_seq_t** handle, const char* /*name*/, int /*streams*/, int /*mode*/) {
  const char* const path = std::getenv("SIVRAY_TEST_KEYS");
  pipeEnd = path == nullptr ? -1 : ::open(path, O_RDWR | O_NONBLOCK | O_CLOEXEC);
  *handle = pipeEnd < 0 ? nullptr : reinterpret_cast<snd_seq_t*>(&event);
  return pipeEnd < 0 ? -ENOENT : 0;
}

int snd_seq_close(snd_seq_t* /*handle*/) { return ::close(pipeEnd); }
int snd_seq_nonblock(snd_seq_t* /*handle*/, int /*isNonBlocking*/) { return 0; }
int snd_seq_set_client_name(snd_seq_t* /*handle*/, const char* /*name*/) { return 0; }
int snd_seq_client_id(snd_seq_t* /*handle*/) { return kProgramClient; }

// Devices.

int snd_seq_system_info(snd_seq_t* /*handle*/, snd_seq_system_info_t* /*info*/) {
  isListed = false;
  return 0;
}
int snd_seq_system_info_get_cur_clients(const snd_seq_system_info_t* /*info*/) { return 1; }

int snd_seq_query_next_client(snd_seq_t* /*handle*/, snd_seq_client_info_t* info) {
  if (isListed) {
    return -ENOENT;
  }
  isListed = true;
  isPortListed = false;
  snd_seq_client_info_set_client(info, kDeviceClient);
  return 0;
}
int snd_seq_client_info_get_num_ports(const snd_seq_client_info_t* /*info*/) { return 1; }

int snd_seq_query_next_port(snd_seq_t* /*handle*/, snd_seq_port_info_t* info) {
  if (isPortListed) {
    return -ENOENT;
  }
  isPortListed = true;
  snd_seq_port_info_set_port(info, 0);
  snd_seq_port_info_set_name(info, "Test Keys");
  snd_seq_port_info_set_capability(info, SND_SEQ_PORT_CAP_READ | SND_SEQ_PORT_CAP_SUBS_READ);
  return 0;
}

// The program's port, and the events that it receives.

int snd_seq_create_simple_port(snd_seq_t* /*handle*/, const char* /*name*/, unsigned /*caps*/, unsigned /*type*/) {
  return kProgramPort;
}
int snd_seq_delete_simple_port(snd_seq_t* /*handle*/, int /*port*/) { return 0; }

int snd_seq_connect_from(snd_seq_t* /*handle*/, int /*port*/, int client, int /*clientsPort*/) {
  isConnected = client == kDeviceClient;
  return isConnected ? 0 : -ENOENT;
}

int snd_seq_poll_descriptors_count(snd_seq_t* /*handle*/, short /*events*/) { return 1; }
int snd_seq_poll_descriptors(snd_seq_t* /*handle*/, pollfd* descriptors, unsigned /*space*/, short events) {
  *descriptors = {pipeEnd, events, 0};
  return 1;
}

int snd_seq_event_input(snd_seq_t* /*handle*/, snd_seq_event_t** received) {
  std::array<std::uint8_t, 3> bytes{};
  if (::read(pipeEnd, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()) || !isConnected) {
    return -EAGAIN;
  }
  event = {};
  event.type = SND_SEQ_EVENT_NOTEON;
  event.dest = {kProgramClient, kProgramPort};
  event.data.note.channel = bytes[0] & 0x0F;
  event.data.note.note = bytes[1];
  event.data.note.velocity = bytes[2];
  *received = &event;
  return 1;
}
int snd_seq_event_input_pending(snd_seq_t* /*handle*/, int /*fetches*/) { return 0; }
int snd_seq_free_event(snd_seq_event_t* /*freed*/) { return 0; }

}  // extern "C"
