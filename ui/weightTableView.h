// weightTableView: the table of the Vorel window. All behaviour comes from QTableView and from
// the window, which filters the table's events; the class exists so that the table can be
// told apart from other views. Owned by the window's layout; cannot fail.
#pragma once

#include <QTableView>

class weightTableView : public QTableView {
    Q_OBJECT

public:
    explicit weightTableView(QWidget* parent = nullptr);
    ~weightTableView() override;
};
