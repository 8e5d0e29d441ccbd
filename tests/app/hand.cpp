// Sits before a real packwise: a plugin that Qt loads into the program when the environment says
// so. It takes the steps of PACKWISE_STEPS, each once its window or button can be used: "frmMain"
// closes that window, "cmdClient" presses that button, "Yes" answers a box, "lblStatus?" prints
// what stands there, "lstNames=3" waits for so many rows with a text, "clipboard?" prints what was
// copied, and "patience?" how many milliseconds the windows have stood still at most.
#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QFile>
#include <QGenericPlugin>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QTimer>

#include <algorithm>
#include <cstdio>

using namespace Qt::Literals;

class Hand : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "hand.json")
public:
    QObject* create(const QString&, const QString&) override {
        steps_ = qEnvironmentVariable("PACKWISE_STEPS").split(u' ');
        timer_.setInterval(5);
        timer_.callOnTimeout(&timer_, [this] { step(); });
        timer_.start();
        sinceTick_.start();
        return new QObject;
    }

private:
    void step() {
        longestPause_ = std::max(longestPause_, sinceTick_.restart());
        if (!steps_.isEmpty() && (isMet(steps_.front()) || isPressed(steps_.front()))) {
            steps_.removeFirst();
        }
    }

    // A step that only looks.
    bool isMet(const QString& step) const {
        if (step == u"clipboard?") {
            return say(step, QGuiApplication::clipboard()->text());
        }
        if (step == u"patience?") {
            return say(step, QString::number(longestPause_));
        }
        if (step.startsWith(u'/')) {
            return QFile::exists(step);
        }
        if (step.endsWith(u'?')) {
            const auto* const label = qobject_cast<QLabel*>(shown(step.chopped(1)));
            return label && say(step, label->text());
        }
        const auto* const list = qobject_cast<QListWidget*>(shown(step.section(u'=', 0, 0)));
        return list && step.contains(u'=') &&
               list->findItems(u"\\S"_s, Qt::MatchRegularExpression).size() ==
                   step.section(u'=', 1).toInt();
    }

    static bool say(const QString& step, const QString& text) {
        std::puts(qPrintable(step + u' ' + text));
        return std::fflush(stdout) == 0;
    }

    static bool isPressed(const QString& step) {
        QWidget* const widget = shown(step);
        if (widget) {
            // Not from within the timer, which a box that the step opens would then wait for.
            QMetaObject::invokeMethod(
                widget,
                [widget] {
                    auto* const button = qobject_cast<QAbstractButton*>(widget);
                    button ? button->click() : void(widget->close());
                },
                Qt::QueuedConnection);
        }
        return widget;
    }

    // The one of that name, or the button of a box with that caption, that can be used.
    static QWidget* shown(const QString& name) {
        const QWidgetList widgets = QApplication::allWidgets();
        const auto found = std::find_if(widgets.begin(), widgets.end(), [&](QWidget* widget) {
            return widget->isVisible() && widget->isEnabled() &&
                   (widget->objectName() == name || isInBox(widget, name));
        });
        return found == widgets.end() ? nullptr : *found;
    }

    static bool isInBox(QWidget* widget, const QString& caption) {
        auto* const button = qobject_cast<QAbstractButton*>(widget);
        return button && qobject_cast<QMessageBox*>(widget->window()) &&
               button->text().remove(u'&') == caption;
    }

    QStringList steps_;
    QTimer timer_;
    QElapsedTimer sinceTick_;
    qint64 longestPause_ = 0;  // milliseconds
};

#include "hand.moc"
