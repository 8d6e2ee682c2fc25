#include "model/byte_stream.h"

#include <bit>
#include <cassert>
#include <cmath>

namespace orva {

Result<Done> ByteReader::need(std::size_t count, Text block) const
{
    if (m_bytes.size() - m_offset >= count)
        return Done{};
    return Error{
        Message(Text::FileEndsInside,
                {Message(block), number(static_cast<long long>(m_bytes.size())),
                 number(static_cast<long long>(m_offset) + static_cast<long long>(count))}),
        std::string(m_name)};
}

std::uint64_t ByteReader::unsignedField(std::size_t size)
{
    assert(m_bytes.size() - m_offset >= size);
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i)
        value |= std::to_integer<std::uint64_t>(m_bytes[m_offset + i]) << (8 * i);
    m_lastField = m_offset;
    m_offset += size;
    return value;
}

std::int16_t ByteReader::i16()
{
    return std::bit_cast<std::int16_t>(static_cast<std::uint16_t>(unsignedField(2)));
}

std::int32_t ByteReader::i32()
{
    return std::bit_cast<std::int32_t>(static_cast<std::uint32_t>(unsignedField(4)));
}

float ByteReader::f32()
{
    return std::bit_cast<float>(static_cast<std::uint32_t>(unsignedField(4)));
}

double ByteReader::f64()
{
    return std::bit_cast<double>(unsignedField(8));
}

std::string ByteReader::chars(std::size_t count)
{
    assert(m_bytes.size() - m_offset >= count);
    const auto* first = reinterpret_cast<const char*>(m_bytes.data()) + m_offset;
    m_lastField = m_offset;
    m_offset += count;
    return {first, count};
}

Result<Done> ByteReader::finite(std::span<float> values, Text field)
{
    for (float& value : values) {
        value = f32();
        if (!std::isfinite(value))
            return error(Message(Text::NotFinite, {Message(field)}));
    }
    return Done{};
}

Error ByteReader::error(Message what) const
{
    return {std::move(what), std::string(m_name) + ", byte " + std::to_string(m_lastField)};
}

void ByteWriter::unsignedField(std::uint64_t value, std::size_t size)
{
    for (std::size_t i = 0; i < size; ++i)
        m_bytes.push_back(static_cast<std::byte>(value >> (8 * i)));
}

void ByteWriter::i16(std::int16_t value)
{
    unsignedField(std::bit_cast<std::uint16_t>(value), 2);
}

void ByteWriter::i32(std::int32_t value)
{
    unsignedField(std::bit_cast<std::uint32_t>(value), 4);
}

void ByteWriter::f32(float value)
{
    unsignedField(std::bit_cast<std::uint32_t>(value), 4);
}

void ByteWriter::f64(double value)
{
    unsignedField(std::bit_cast<std::uint64_t>(value), 8);
}

void ByteWriter::f32(std::span<const float> values)
{
    for (const float value : values)
        f32(value);
}

void ByteWriter::chars(std::string_view text)
{
    append(std::as_bytes(std::span(text)));
}

void ByteWriter::append(std::span<const std::byte> bytes)
{
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
}

} // namespace orva
