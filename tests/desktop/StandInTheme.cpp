#include <QObject>

/// What the toolkit's plugins for KDE and for GTK tell of themselves.
class StandInTheme : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "tessary.test.StandInTheme" FILE "stand-in-theme.json")
};

#include "StandInTheme.moc"
