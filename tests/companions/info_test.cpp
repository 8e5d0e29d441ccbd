#include "companions/frminfo.h"
#include "support/fakeshell.h"

#include <QDesktopServices>

namespace packwise {
namespace {

// Stands for the user's browser.
class Browser : public QObject {
    Q_OBJECT
public:
    Browser() { QDesktopServices::setUrlHandler(u"https"_s, this, "open"); }
    ~Browser() override { QDesktopServices::unsetUrlHandler(u"https"_s); }

    QList<QUrl> opened;

public Q_SLOTS:
    void open(const QUrl& url) { opened += url; }
};

TEST(Info, EveryPlaceButTheAddressEndsTheWait) {
    FakeShell shell;
    Browser browser;
    FrmInfo window(shell);
    QWidget* const places[] = {&window,         window.lblPackwise, window.lblVersion,
                               window.lblStuff, window.Label1,      window.Label2};
    Qt::MouseButton button = Qt::LeftButton;
    for (QWidget* place : places) {
        QTimer::singleShot(0, place, [&] {
            QTest::keyClick(&window, Qt::Key_Escape);
            QTest::keyClick(&window, Qt::Key_Return);
            QTest::mouseClick(window.lblSiteLink, button);
            QTest::mouseDClick(window.lblSiteLink, button);
            EXPECT_TRUE(window.isVisible());
            QTest::mousePress(place, button);
            const bool closesOnClick =
                place == window.lblStuff || place == window.Label1 || place == window.Label2;
            EXPECT_EQ(window.isVisible(), closesOnClick) << place->objectName().toStdString();
            QTest::mouseRelease(place, button);
        });
        window.showModally();
        EXPECT_FALSE(window.isVisible());
        button = button == Qt::LeftButton ? Qt::RightButton : Qt::LeftButton;
    }
    EXPECT_EQ(browser.opened, QList<QUrl>(6, QUrl(QString::fromUtf16(kWebPage))));
}

}  // namespace
}  // namespace packwise

#include "info_test.moc"
