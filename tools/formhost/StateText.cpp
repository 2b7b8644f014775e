// VST 3: JUCE's host keeps XML with the component's stream in Base64; the JUCE wrapper in the plug-in appends its own
// data to that stream. LV2: a Turtle text in which one property holds the bytes as a string.
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formhost/StateText.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <cstring>
#include <string>
#include <string_view>

namespace sivray::formhost {
namespace {

constexpr const char* kComponent = "IComponent";
constexpr std::string_view kPrivateMark = "JUCEPrivateData";
constexpr std::string_view kLv2Property = "StateString>";

std::vector<std::uint8_t> bytesOf(const juce::MemoryBlock& block) {
  const auto* bytes = static_cast<const std::uint8_t*>(block.getData());
  return {bytes, bytes + block.getSize()};
}

juce::MemoryBlock blockOf(std::span<const std::uint8_t> bytes) { return {bytes.data(), bytes.size()}; }

/// Returns where the wrapper's data begins: eight zero bytes, the data, its length as a 64-bit number, and a mark.
std::size_t privateDataAt(const std::vector<std::uint8_t>& stream) {
  constexpr std::size_t kNumber = sizeof(std::uint64_t);
  const std::size_t tail = kPrivateMark.size() + kNumber;
  const std::string_view text(reinterpret_cast<const char*>(stream.data()), stream.size());
  if (stream.size() < tail + kNumber || !text.ends_with(kPrivateMark)) {
    return stream.size();
  }
  std::uint64_t length = 0;
  std::memcpy(&length, stream.data() + stream.size() - tail, kNumber);
  return length > stream.size() - tail - kNumber ? stream.size() : stream.size() - tail - length - kNumber;
}

std::unique_ptr<juce::XmlElement> vst3State(std::span<const std::uint8_t> hostState) {
  return juce::AudioProcessor::getXmlFromBinary(hostState.data(), static_cast<int>(hostState.size()));
}

std::vector<std::uint8_t> unwrapVst3(std::span<const std::uint8_t> hostState) {
  juce::MemoryBlock stream;
  const auto state = vst3State(hostState);
  const auto* const component = state == nullptr ? nullptr : state->getChildByName(kComponent);
  if (component == nullptr || !stream.fromBase64Encoding(component->getAllSubText())) {
    return {};
  }
  std::vector<std::uint8_t> bytes = bytesOf(stream);
  bytes.resize(privateDataAt(bytes));
  return bytes;
}

std::vector<std::uint8_t> rewrapVst3(std::span<const std::uint8_t> bytes) {
  juce::XmlElement state("VST3PluginState");
  state.createNewChildElement(kComponent)->addTextElement(blockOf(bytes).toBase64Encoding());
  juce::MemoryBlock wrapped;
  juce::AudioProcessor::copyXmlToBinary(state, wrapped);
  return bytesOf(wrapped);
}

struct Place {
  std::size_t from = 0;
  std::size_t length = 0;
};

/// Returns where the value of the property with the bytes is: the text in the quotes after its name, one or three on
/// each side.
Place lv2TextIn(std::string_view turtle) {
  const std::size_t property = turtle.find(kLv2Property);
  const std::size_t open = property == std::string_view::npos ? property : turtle.find('"', property);
  if (open == std::string_view::npos) {
    return {};
  }
  const std::string_view quotes = turtle.substr(open, turtle.substr(open).starts_with("\"\"\"") ? 3 : 1);
  const std::size_t from = open + quotes.size();
  const std::size_t end = turtle.find(quotes, from);
  return end == std::string_view::npos ? Place{} : Place{from, end - from};
}

std::string_view turtleOf(std::span<const std::uint8_t> hostState) {
  return {reinterpret_cast<const char*>(hostState.data()), hostState.size()};
}

std::vector<std::uint8_t> unwrapLv2(std::span<const std::uint8_t> hostState) {
  const std::string_view turtle = turtleOf(hostState);
  const Place place = lv2TextIn(turtle);
  juce::MemoryBlock block;
  block.fromBase64Encoding(std::string(turtle.substr(place.from, place.length)).c_str());
  return bytesOf(block);
}

std::vector<std::uint8_t> rewrapLv2(std::span<const std::uint8_t> hostState, std::span<const std::uint8_t> bytes) {
  const std::string_view turtle = turtleOf(hostState);
  const Place place = lv2TextIn(turtle);
  std::string text(turtle.substr(0, place.from));
  text += blockOf(bytes).toBase64Encoding().toStdString();
  text += turtle.substr(place.from + place.length);
  return {text.begin(), text.end()};
}

}  // namespace

std::vector<std::uint8_t> unwrapState(hosting::Form form, std::span<const std::uint8_t> hostState) {
  return form == hosting::Form::vst3 ? unwrapVst3(hostState) : unwrapLv2(hostState);
}

std::vector<std::uint8_t> rewrapState(hosting::Form form, std::span<const std::uint8_t> hostState,
                                      std::span<const std::uint8_t> bytes) {
  return form == hosting::Form::vst3 ? rewrapVst3(bytes) : rewrapLv2(hostState, bytes);
}

}  // namespace sivray::formhost
