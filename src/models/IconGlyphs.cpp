#include "models/IconGlyphs.h"

#include <QHash>

namespace ravelinth {

const QList<std::pair<QString, QString>> &IconGlyphs::table() {
    static const QList<std::pair<QString, QString>> entries{
        {u"app.badge"_qs, u"apps"_qs},
        {u"arrow.clockwise"_qs, u"refresh"_qs},
        {u"arrow.down"_qs, u"arrow_downward"_qs},
        {u"arrow.down.circle.fill"_qs, u"download"_qs},
        {u"arrow.down.doc.fill"_qs, u"file_download"_qs},
        {u"arrow.up"_qs, u"arrow_upward"_qs},
        {u"arrow.up.forward.app"_qs, u"open_in_new"_qs},
        {u"arrow.uturn.backward"_qs, u"undo"_qs},
        {u"bolt.fill"_qs, u"bolt"_qs},
        {u"books.vertical.fill"_qs, u"menu_book"_qs},
        {u"calendar"_qs, u"calendar_today"_qs},
        {u"chart.bar.fill"_qs, u"bar_chart"_qs},
        {u"chart.pie.fill"_qs, u"pie_chart"_qs},
        {u"checkmark.circle.fill"_qs, u"check_circle"_qs},
        {u"checkmark.seal.fill"_qs, u"verified"_qs},
        {u"chevron.down"_qs, u"expand_more"_qs},
        {u"chevron.right"_qs, u"chevron_right"_qs},
        {u"chevron.up"_qs, u"expand_less"_qs},
        {u"circle"_qs, u"radio_button_unchecked"_qs},
        {u"circle.dotted"_qs, u"donut_large"_qs},
        {u"circle.fill"_qs, u"circle"_qs},
        {u"doc"_qs, u"insert_drive_file"_qs},
        {u"doc.fill"_qs, u"description"_qs},
        {u"doc.on.doc"_qs, u"content_copy"_qs},
        {u"doc.on.doc.fill"_qs, u"file_copy"_qs},
        {u"doc.text"_qs, u"article"_qs},
        {u"doc.text.magnifyingglass"_qs, u"find_in_page"_qs},
        {u"doc.zipper"_qs, u"folder_zip"_qs},
        {u"exclamationmark.octagon.fill"_qs, u"report"_qs},
        {u"exclamationmark.triangle.fill"_qs, u"warning"_qs},
        {u"externaldrive.badge.plus"_qs, u"album"_qs},
        {u"externaldrive.fill"_qs, u"sd_storage"_qs},
        {u"eye.slash"_qs, u"visibility_off"_qs},
        {u"film"_qs, u"movie"_qs},
        {u"folder"_qs, u"folder_open"_qs},
        {u"folder.badge.plus"_qs, u"create_new_folder"_qs},
        {u"folder.badge.questionmark"_qs, u"folder_special"_qs},
        {u"folder.fill"_qs, u"folder"_qs},
        {u"gauge.with.dots.needle.bottom.50percent"_qs, u"speed"_qs},
        {u"gearshape"_qs, u"settings"_qs},
        {u"house.fill"_qs, u"home"_qs},
        {u"info.circle"_qs, u"info"_qs},
        {u"internaldrive"_qs, u"storage"_qs},
        {u"internaldrive.fill"_qs, u"storage"_qs},
        {u"keyboard"_qs, u"keyboard"_qs},
        {u"magnifyingglass"_qs, u"search"_qs},
        {u"menubar.dock.rectangle"_qs, u"desktop_windows"_qs},
        {u"minus.circle"_qs, u"remove_circle_outline"_qs},
        {u"music.note"_qs, u"music_note"_qs},
        {u"photo"_qs, u"photo"_qs},
        {u"play.fill"_qs, u"play_arrow"_qs},
        {u"questionmark.circle"_qs, u"help_outline"_qs},
        {u"sidebar.left"_qs, u"view_sidebar"_qs},
        {u"slider.horizontal.3"_qs, u"tune"_qs},
        {u"sparkles"_qs, u"auto_awesome"_qs},
        {u"speedometer"_qs, u"speed"_qs},
        {u"square.grid.2x2.fill"_qs, u"grid_view"_qs},
        {u"stop.fill"_qs, u"stop"_qs},
        {u"textformat.abc"_qs, u"sort_by_alpha"_qs},
        {u"trash"_qs, u"delete_outline"_qs},
        {u"trash.fill"_qs, u"delete"_qs},
        {u"xmark.circle"_qs, u"highlight_off"_qs},
        {u"xmark.circle.fill"_qs, u"cancel"_qs},
    };
    return entries;
}

std::optional<QString> IconGlyphs::materialName(QStringView identifier) {
    static const QHash<QString, QString> byIdentifier = [] {
        QHash<QString, QString> hash;
        for (const auto &[id, name] : table())
            hash.insert(id, name);
        return hash;
    }();
    const auto it = byIdentifier.constFind(identifier.toString());
    if (it == byIdentifier.constEnd())
        return std::nullopt;
    return *it;
}

} // namespace ravelinth
