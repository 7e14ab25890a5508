#ifndef XMLDOM_FUZZ_INPUT_H
#define XMLDOM_FUZZ_INPUT_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

/// The bytes of an input, as far as they are not read yet. Behind the end every byte is 0.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : m_at(data), m_end(data + size) {}

  bool IsEmpty() const { return m_at == m_end; }
  unsigned int Byte() { return IsEmpty() ? 0 : *m_at++; }

  template <std::size_t N>
  std::string OneOf(const char* const (&texts)[N]) {
    return texts[Byte() % N];
  }

  /// One of the texts, or as many bytes as the next one says.
  template <std::size_t N>
  std::string OneOfOrAny(const char* const (&texts)[N]) {
    const unsigned int choice = Byte();
    if (choice < 128) return texts[choice % N];
    std::string text;
    for (unsigned int i = choice - 128; i > 0 && !IsEmpty(); --i) {
      text.push_back(static_cast<char>(Byte()));
    }
    return text;
  }

  /// All bytes up to the next one of 0, which is read too, or up to the end.
  std::string UpToNul() {
    std::string text;
    while (!IsEmpty()) {
      const unsigned int byte = Byte();
      if (byte == 0) break;
      text.push_back(static_cast<char>(byte));
    }
    return text;
  }

  /// All that is left.
  std::string Rest() {
    std::string text(m_at, m_end);
    m_at = m_end;
    return text;
  }

 private:
  const std::uint8_t* m_at;
  const std::uint8_t* m_end;
};

}  // namespace fuzz

#endif
