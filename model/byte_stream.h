#pragma once

#include "model/result.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orva {

/// Reads little-endian fields from bytes, one after another. A reader first asks with need()
/// whether the bytes of its whole block are there; taking more than are left is a broken promise.
class ByteReader {
public:
    /// `name` says in errors which file it is. Both must outlive the reader.
    ByteReader(std::span<const std::byte> bytes, std::string_view name)
        : m_bytes(bytes), m_name(name)
    {
    }

    /// An error unless `count` more bytes are there; `block` names it there (Text::BlockRoom).
    Result<Done> need(std::size_t count, Text block) const;

    std::int16_t i16();
    std::int32_t i32();
    float f32();
    double f64();
    std::string chars(std::size_t count);

    /// Fills `values`; an error if one of them is not a finite number.
    Result<Done> finite(std::span<float> values, Text field);

    /// Bytes that have been taken.
    std::size_t offset() const { return m_offset; }

    /// An error at the field last taken.
    Error error(Message what) const;

private:
    std::uint64_t unsignedField(std::size_t size);

    std::span<const std::byte> m_bytes;
    std::string_view m_name;
    std::size_t m_offset = 0;
    std::size_t m_lastField = 0;
};

/// Collects little-endian fields.
class ByteWriter {
public:
    void i16(std::int16_t value);
    void i32(std::int32_t value);
    void f32(float value);
    void f64(double value);
    void f32(std::span<const float> values);
    void chars(std::string_view text);
    void append(std::span<const std::byte> bytes);

    const std::vector<std::byte>& bytes() const { return m_bytes; }

private:
    void unsignedField(std::uint64_t value, std::size_t size);

    std::vector<std::byte> m_bytes;
};

} // namespace orva
