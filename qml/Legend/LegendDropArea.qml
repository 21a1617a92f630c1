import QtQuick

Item {
}
