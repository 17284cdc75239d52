#pragma once

class QScrollArea;
class QVBoxLayout;

namespace lullwick::ScrollPage {

/// Makes `area` a tab's page: a borderless vertical scroll area on the window colour holding one
/// full-width column with 20 points of padding and 18 points between its parts. Returns the column.
QVBoxLayout *setUp(QScrollArea *area);

} // namespace lullwick::ScrollPage
