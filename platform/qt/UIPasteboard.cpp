#include "UIPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

UIPasteboard& UIPasteboard::generalPasteboard()
{
    static UIPasteboard pasteboard;
    return pasteboard;
}

std::optional<std::string> UIPasteboard::string() const
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (!data || !data->hasText())
        return std::nullopt;
    return data->text().toStdString();
}

void UIPasteboard::setString(const std::string& text)
{
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}
