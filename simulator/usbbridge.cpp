#include "simulator/usbbridge.h"

namespace
{
QByteArray hex4(quint16 number)
{
    return QByteArray::number(number, 16).rightJustified(4, '0');
}

// Escapes a string as udev does for a property that must not contain spaces.
QByteArray underscored(QByteArray text)
{
    return text.trimmed().replace(' ', '_');
}

// Escapes a string as udev does for an ID_..._ENC property.
QByteArray escaped(QByteArray text)
{
    return text.replace(' ', "\\x20");
}

// The lines of one device, followed by an empty line.
class Block
{
public:
    explicit Block(const QByteArray &path) { line('P', path); }

    Block &property(const char *name, const QByteArray &value) { return line('E', name + ('=' + value)); }
    Block &attribute(const char *name, const QByteArray &value)
    {
        return line('A', name + ('=' + value + "\\n"));
    }
    Block &link(const char *name, const QByteArray &target) { return line('L', name + ('=' + target)); }
    QByteArray text() const { return _text + '\n'; }

private:
    Block &line(char kind, const QByteArray &text)
    {
        _text += kind + (": " + text + '\n');
        return *this;
    }

    QByteArray _text;
};

// The properties that udev's built-in rules set on the USB device and on its tty.
Block &describe(Block &block, const UsbBridge &bridge)
{
    const QByteArray serial = underscored(bridge.vendorText) + '_' + underscored(bridge.productText) +
                              (bridge.serial.isEmpty() ? QByteArray() : '_' + bridge.serial);
    block.property("ID_BUS", "usb")
        .property("ID_MODEL", underscored(bridge.productText))
        .property("ID_MODEL_ENC", escaped(bridge.productText))
        .property("ID_MODEL_ID", hex4(bridge.product))
        .property("ID_SERIAL", serial)
        .property("ID_VENDOR", underscored(bridge.vendorText))
        .property("ID_VENDOR_ENC", escaped(bridge.vendorText))
        .property("ID_VENDOR_ID", hex4(bridge.vendor))
        .property("ID_REVISION", "0600")
        .property("ID_USB_INTERFACES", ":ffffff:");
    if (!bridge.serial.isEmpty())
        block.property("ID_SERIAL_SHORT", bridge.serial);
    return block;
}
} // namespace

UsbBridge UsbBridge::ftdi()
{
    return {0x0403, 0x6001, "FTDI", "FT232R USB UART", "A6007T11", "ftdi_sio"};
}

UsbBridge UsbBridge::prolific()
{
    return {0x067B, 0x2303, "Prolific Technology Inc.", "USB-Serial Controller", "", "pl2303"};
}

UsbBridge UsbBridge::foreignFtdi()
{
    return {0x0403, 0x6015, "FTDI", "FT230X Basic UART", "DN03XKQ2", "ftdi_sio"};
}

UsbBridge UsbBridge::foreignCh340()
{
    return {0x1A86, 0x7523, "1a86", "USB Serial", "", "ch341-uart"};
}

UsbRecord recordOf(const UsbBridge &bridge, const UsbPlace &place)
{
    const QByteArray socket = "1-" + QByteArray::number(place.socket);
    const QByteArray devicePath = "/devices/pci0000:00/0000:00:14.0/usb1/" + socket;
    const QByteArray interfacePath = devicePath + '/' + socket + ":1.0";
    const QByteArray portPath = interfacePath + '/' + place.ttyName;
    const QByteArray ttyPath = portPath + "/tty/" + place.ttyName;
    const QByteArray ids =
        QByteArray::number(bridge.vendor, 16) + '/' + QByteArray::number(bridge.product, 16);
    const QByteArray ttyMinor = QByteArray::number(place.ttyMinor);

    Block device(devicePath);
    device.property("SUBSYSTEM", "usb")
        .property("DEVTYPE", "usb_device")
        .property("DRIVER", "usb")
        .property("PRODUCT", ids + "/600")
        .property("TYPE", "0/0/0")
        .property("BUSNUM", "001")
        .property("DEVNUM", QByteArray::number(place.address).rightJustified(3, '0'))
        .attribute("idVendor", hex4(bridge.vendor))
        .attribute("idProduct", hex4(bridge.product))
        .attribute("manufacturer", bridge.vendorText)
        .attribute("product", bridge.productText)
        .attribute("bcdDevice", "0600")
        .attribute("busnum", "1")
        .attribute("devnum", QByteArray::number(place.address))
        .attribute("bDeviceClass", "00")
        .attribute("speed", "12");
    if (!bridge.serial.isEmpty())
        device.attribute("serial", bridge.serial);

    Block interface(interfacePath);
    interface.property("SUBSYSTEM", "usb")
        .property("DEVTYPE", "usb_interface")
        .property("DRIVER", bridge.driver)
        .property("PRODUCT", ids + "/600")
        .property("INTERFACE", "255/255/255")
        .attribute("bInterfaceNumber", "00")
        .attribute("bInterfaceClass", "ff")
        .attribute("interface", bridge.productText)
        .link("driver", "../../../../../../bus/usb/drivers/" + bridge.driver);

    Block port(portPath);
    port.property("SUBSYSTEM", "usb-serial")
        .property("DRIVER", bridge.driver)
        .attribute("port_number", "0")
        .link("driver", "../../../../../../../bus/usb-serial/drivers/" + bridge.driver);

    Block tty(ttyPath);
    tty.property("SUBSYSTEM", "tty")
        .property("DEVNAME", "/dev/" + place.ttyName)
        .property("MAJOR", "188")
        .property("MINOR", ttyMinor)
        .property("ID_PATH", "pci-0000:00:14.0-usb-0:" + QByteArray::number(place.socket) + ":1.0")
        .property("ID_TYPE", "generic")
        .property("ID_USB_DRIVER", bridge.driver)
        .property("ID_USB_INTERFACE_NUM", "00")
        .attribute("dev", "188:" + ttyMinor)
        .link("device", "../../../" + place.ttyName);

    const QByteArray sys = "/sys";
    return {describe(device, bridge).text() + interface.text() + port.text() + describe(tty, bridge).text(),
            {sys + ttyPath, sys + portPath, sys + interfacePath, sys + devicePath}};
}
