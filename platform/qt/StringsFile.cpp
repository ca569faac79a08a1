#include "StringsFile.h"

#include <QString>
#include <QStringDecoder>

namespace {

class Reader {
public:
    explicit Reader(QString text) : text_(std::move(text)) {}

    std::optional<std::map<std::string, std::string>> read()
    {
        std::map<std::string, std::string> table;
        while (true) {
            if (!skipSpaceAndComments())
                return std::nullopt;
            if (atEnd())
                return table;
            std::optional<QString> key = token();
            if (!key || !skipSpaceAndComments())
                return std::nullopt;
            QString value = *key;
            if (peek() == '=') {
                ++pos_;
                if (!skipSpaceAndComments())
                    return std::nullopt;
                std::optional<QString> read = token();
                if (!read || !skipSpaceAndComments())
                    return std::nullopt;
                value = *read;
            }
            if (peek() != ';')
                return std::nullopt;
            ++pos_;
            table[key->toStdString()] = value.toStdString();
        }
    }

private:
    bool atEnd() const { return pos_ >= text_.size(); }
    QChar peek() const { return atEnd() ? QChar() : text_[pos_]; }

    // False for a comment that never ends.
    bool skipSpaceAndComments()
    {
        while (!atEnd()) {
            if (peek().isSpace()) {
                ++pos_;
            } else if (text_.mid(pos_, 2) == QLatin1String("/*")) {
                qsizetype end = text_.indexOf(QLatin1String("*/"), pos_ + 2);
                if (end < 0)
                    return false;
                pos_ = end + 2;
            } else if (text_.mid(pos_, 2) == QLatin1String("//")) {
                qsizetype end = text_.indexOf(QLatin1Char('\n'), pos_);
                pos_ = end < 0 ? text_.size() : end + 1;
            } else {
                return true;
            }
        }
        return true;
    }

    std::optional<QString> token()
    {
        if (peek() == '"')
            return quoted();
        QString word;
        while (!atEnd() && (peek().isLetterOrNumber() || QStringLiteral("_.-$:/").contains(peek())))
            word += text_[pos_++];
        if (word.isEmpty())
            return std::nullopt;
        return word;
    }

    std::optional<QString> quoted()
    {
        ++pos_;
        QString result;
        while (!atEnd()) {
            QChar c = text_[pos_++];
            if (c == '"')
                return result;
            if (c != '\\') {
                result += c;
                continue;
            }
            if (atEnd())
                return std::nullopt;
            QChar escaped = text_[pos_++];
            switch (escaped.unicode()) {
            case 'n': result += '\n'; break;
            case 't': result += '\t'; break;
            case 'r': result += '\r'; break;
            case '0': result += QChar(0); break;
            case 'U':
            case 'u': {
                bool ok = false;
                uint code = text_.mid(pos_, 4).toUInt(&ok, 16);
                if (!ok || text_.mid(pos_, 4).size() != 4)
                    return std::nullopt;
                pos_ += 4;
                result += QChar(static_cast<char16_t>(code));
                break;
            }
            default: result += escaped; break;
            }
        }
        return std::nullopt;
    }

    QString text_;
    qsizetype pos_ = 0;
};

} // namespace

std::optional<std::map<std::string, std::string>> parseStringsFile(const QByteArray& data)
{
    QString text;
    if (data.startsWith("\xFF\xFE") || data.startsWith("\xFE\xFF")) {
        auto decode = QStringDecoder(QStringDecoder::Utf16, QStringDecoder::Flag::Stateless);
        text = decode(data);
        if (decode.hasError())
            return std::nullopt;
    } else {
        auto decode = QStringDecoder(QStringDecoder::Utf8);
        text = decode(data);
        if (decode.hasError())
            return std::nullopt;
    }
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    return Reader(std::move(text)).read();
}
