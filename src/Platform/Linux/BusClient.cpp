#include "Platform/Linux/BusClient.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace morlaine {

namespace {

using namespace std::chrono_literals;
using namespace std::string_view_literals;

constexpr char byteOrder = std::endian::native == std::endian::little ? 'l' : 'B';
constexpr std::size_t prologueLength = 16; // length of a message up to its header fields
constexpr std::size_t longestMessage = 1U << 20U;
constexpr std::size_t wordLength = 4;
constexpr std::size_t structAlignment = 8;

enum class MessageType : char { call = 1, reply = 2, error = 3 };
enum class Field : char { path = 1, interface = 2, member = 3, replySerial = 5, destination = 6 };
constexpr char noAutoStart = 2;

constexpr BusClient::Call hello{"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "Hello"};

std::size_t aligned(std::size_t offset, std::size_t alignment)
{
    return (offset + alignment - 1) / alignment * alignment;
}

void appendWord(std::string& bytes, std::uint32_t word)
{
    std::array<char, wordLength> raw{};
    std::memcpy(raw.data(), &word, wordLength);
    bytes.append(raw.data(), wordLength);
}

void appendField(std::string& fields, Field field, char type, std::string_view text)
{
    fields.resize(aligned(fields.size(), structAlignment));
    fields += {static_cast<char>(field), 1, type, 0};
    appendWord(fields, static_cast<std::uint32_t>(text.size()));
    fields.append(text);
    fields += '\0';
}

/// Reads the values of a message one after another. If one does not fit, the rest is skipped.
class Values {
public:
    explicit Values(std::string_view bytes) : m_bytes(bytes) {}

    [[nodiscard]] bool isAtEnd() const { return m_offset >= m_bytes.size(); }
    void alignTo(std::size_t alignment) { m_offset = aligned(m_offset, alignment); }

    [[nodiscard]] std::optional<std::string_view> bytes(std::size_t count)
    {
        if (m_offset > m_bytes.size() || m_bytes.size() - m_offset < count) {
            m_offset = m_bytes.size();
            return std::nullopt;
        }
        return m_bytes.substr(std::exchange(m_offset, m_offset + count), count);
    }

    [[nodiscard]] std::optional<std::uint32_t> word()
    {
        alignTo(wordLength);
        const std::optional<std::string_view> raw = bytes(wordLength);
        if (!raw) {
            return std::nullopt;
        }
        std::uint32_t word = 0;
        std::memcpy(&word, raw->data(), wordLength);
        return word;
    }

    [[nodiscard]] std::optional<std::string_view> text()
    {
        const std::optional<std::uint32_t> length = word();
        const std::optional<std::string_view> raw = length ? bytes(std::size_t{*length} + 1) : std::nullopt;
        return raw ? std::optional(raw->substr(0, *length)) : std::nullopt;
    }

    void skip(char type)
    {
        if (type == 'u') {
            (void)word();
        } else if (type == 'g') {
            const std::optional<std::string_view> length = bytes(1);
            (void)bytes(length ? std::size_t{static_cast<unsigned char>(length->front())} + 1 : 0);
        } else if (type == 's' || type == 'o') {
            (void)text();
        } else {
            m_offset = m_bytes.size();
        }
    }

private:
    std::string_view m_bytes;
    std::size_t m_offset = 0;
};

/// A whole message; the views point into the received bytes.
struct Message {
    std::size_t length; // of the whole message
    MessageType type;
    std::string_view fields;
    std::string_view body;
};

enum class Parsing { complete, incomplete, garbage };

Parsing parse(std::string_view bytes, Message& message)
{
    if (bytes.size() < prologueLength) {
        return Parsing::incomplete;
    }
    if (bytes[0] != byteOrder || bytes[3] != 1) {
        return Parsing::garbage;
    }
    const std::size_t bodyLength = Values(bytes.substr(4)).word().value_or(0);
    const std::size_t fieldsLength = Values(bytes.substr(12)).word().value_or(0);
    const std::size_t bodyBegin = aligned(prologueLength + fieldsLength, structAlignment);
    if (bodyBegin + bodyLength > longestMessage) {
        return Parsing::garbage;
    }
    message = {bodyBegin + bodyLength, static_cast<MessageType>(bytes[1]), {}, {}};
    if (bytes.size() < message.length) {
        return Parsing::incomplete;
    }
    message.fields = bytes.substr(prologueLength, fieldsLength);
    message.body = bytes.substr(bodyBegin, bodyLength);
    return Parsing::complete;
}

/// The serial number of the call that a message replies to; 0 if it is no reply.
std::uint32_t replySerialIn(std::string_view fields)
{
    Values values(fields);
    while (!values.isAtEnd()) {
        values.alignTo(structAlignment);
        const std::optional<std::string_view> head = values.bytes(4); // the field's code and the signature of its value
        if (!head) {
            break;
        }
        if ((*head)[0] == static_cast<char>(Field::replySerial) && (*head)[2] == 'u') {
            return values.word().value_or(0);
        }
        values.skip((*head)[2]);
    }
    return 0;
}

/// Removes the part up to the separator, and the separator, from `rest`; returns the part.
std::string_view nextPart(std::string_view& rest, char separator)
{
    const std::size_t end = std::min(rest.find(separator), rest.size());
    const std::string_view part = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return part;
}

std::string unescaped(std::string_view value)
{
    std::string result;
    while (!value.empty()) {
        unsigned char byte = 0;
        if (value.front() == '%' && value.size() > 2 &&
            std::from_chars(value.data() + 1, value.data() + 3, byte, 16).ptr == value.data() + 3) {
            result += static_cast<char>(byte);
            value.remove_prefix(3);
        } else {
            result += value.front();
            value.remove_prefix(1);
        }
    }
    return result;
}

/// The name of the socket as the system expects it; that of an abstract socket begins with a NUL.
std::optional<std::string> socketNameIn(std::string_view address)
{
    if (nextPart(address, ':') != "unix") {
        return std::nullopt;
    }
    while (!address.empty()) {
        std::string_view value = nextPart(address, ',');
        const std::string_view key = nextPart(value, '=');
        if (key == "path") {
            return unescaped(value);
        }
        if (key == "abstract") {
            return '\0' + unescaped(value);
        }
        if (key == "runtime") {
            const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
            return std::string(runtime == nullptr ? "" : runtime) + "/bus";
        }
    }
    return std::nullopt;
}

/// Returns an open descriptor if the socket accepts. Retries until the deadline if the queue of connections is full.
FileDescriptor connectTo(const std::string& name, BusClient::Clock::time_point deadline)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.empty() || name.size() >= sizeof address.sun_path) {
        return {};
    }
    std::memcpy(&address.sun_path[0], name.data(), name.size());
    const bool isPath = name.front() != '\0';
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size() + (isPath ? 1 : 0));
    FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    while (socket.isOpen()) {
        if (::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), length) == 0) {
            return socket;
        }
        if (errno != EAGAIN || BusClient::Clock::now() >= deadline) {
            break;
        }
        ::poll(nullptr, 0, 5);
    }
    return {};
}

std::string hexadecimal(std::string_view text)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result;
    for (const char character : text) {
        result += digits[static_cast<unsigned char>(character) >> 4U];
        result += digits[static_cast<unsigned char>(character) & 15U];
    }
    return result;
}

} // namespace

BusClient::BusClient(std::string_view addresses, Clock::time_point deadline) : m_deadline(deadline)
{
    connect(addresses);
    if (m_socket.isOpen()) {
        authenticate();
    }
}

void BusClient::connect(std::string_view addresses)
{
    while (!addresses.empty()) {
        const std::optional<std::string> name = socketNameIn(nextPart(addresses, ';'));
        if (!name) {
            m_state = State::untried;
            return;
        }
        m_state = State::dead;
        m_socket = connectTo(*name, m_deadline);
        if (m_socket.isOpen()) {
            return;
        }
    }
}

void BusClient::authenticate()
{
    const std::string user = hexadecimal(std::to_string(::geteuid()));
    // None of these needs the answer to the one before, so that all are sent at once.
    if (!send("\0AUTH EXTERNAL "sv) || !send(user) || !send("\r\nBEGIN\r\n") || !send(request(hello))) {
        return;
    }
    std::size_t end = std::string::npos;
    while ((end = m_received.find("\r\n")) == std::string::npos) {
        if (m_received.size() > longestMessage || !receiveMore()) {
            return;
        }
    }
    if (!m_received.starts_with("OK ")) {
        return;
    }
    m_received.erase(0, end + 2);
    const std::optional<Reply> reply = replyTo(m_lastSerial);
    m_state = reply && !reply->isError ? State::connected : State::dead;
}

std::optional<BusClient::Reply> BusClient::call(const Call& call)
{
    if (m_state != State::connected || !send(request(call))) {
        return std::nullopt;
    }
    return replyTo(m_lastSerial);
}

std::optional<BusClient::Reply> BusClient::replyTo(std::uint32_t serial)
{
    for (;;) {
        Message message{};
        const Parsing parsing = parse(m_received, message);
        if (parsing == Parsing::garbage || (parsing == Parsing::incomplete && !receiveMore())) {
            return std::nullopt;
        }
        if (parsing == Parsing::incomplete) {
            continue;
        }
        const bool isReply = message.type == MessageType::reply || message.type == MessageType::error;
        if (isReply && replySerialIn(message.fields) == serial) {
            Reply reply{message.type == MessageType::error, std::string(message.body)};
            m_received.erase(0, message.length);
            return reply;
        }
        m_received.erase(0, message.length);
    }
}

std::string BusClient::request(const Call& call)
{
    std::string fields;
    appendField(fields, Field::path, 'o', call.path);
    appendField(fields, Field::interface, 's', call.interface);
    appendField(fields, Field::member, 's', call.member);
    appendField(fields, Field::destination, 's', call.destination);
    std::string message{byteOrder, static_cast<char>(MessageType::call), noAutoStart, 1};
    appendWord(message, 0); // no body
    appendWord(message, ++m_lastSerial);
    appendWord(message, static_cast<std::uint32_t>(fields.size()));
    message += fields;
    message.resize(aligned(message.size(), structAlignment));
    return message;
}

bool BusClient::send(std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::send(m_socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if ((errno != EAGAIN && errno != EINTR) || !waitFor(POLLOUT)) {
            return false;
        }
    }
    return true;
}

bool BusClient::receiveMore()
{
    std::array<char, 4096> bytes{};
    for (;;) {
        if (!waitFor(POLLIN)) {
            return false;
        }
        const ssize_t count = ::recv(m_socket.get(), bytes.data(), bytes.size(), 0);
        if (count > 0) {
            m_received.append(bytes.data(), static_cast<std::size_t>(count));
            return true;
        }
        if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
            return false;
        }
    }
}

bool BusClient::waitFor(short events) const
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_deadline - Clock::now());
    pollfd waiting{m_socket.get(), events, 0};
    return left > 0ms && ::poll(&waiting, 1, static_cast<int>(left.count())) > 0;
}

std::optional<std::string> textIn(const BusClient::Reply& reply)
{
    const std::optional<std::string_view> text = Values(reply.body).text();
    return text && !reply.isError ? std::optional<std::string>(*text) : std::nullopt;
}

} // namespace morlaine
