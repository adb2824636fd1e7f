#pragma once

#include "Core/Models/FileNodeJson.h"

#include <QBuffer>
#include <QByteArray>

#include <gtest/gtest.h>

#include <string>

namespace morlaine::test {

inline std::string encoded(const FileNode& root)
{
    QByteArray text;
    QBuffer sink(&text);
    sink.open(QIODevice::WriteOnly);
    EXPECT_TRUE(encodeFileNode(root, sink));
    return text.toStdString();
}

/// Calls `read` with a device that contains `text`.
template <typename Read>
auto readWith(Read read, const std::string& text)
{
    QByteArray bytes = QByteArray::fromStdString(text);
    QBuffer source(&bytes);
    source.open(QIODevice::ReadOnly);
    return read(source);
}

} // namespace morlaine::test
