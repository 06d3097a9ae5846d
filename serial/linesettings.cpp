#include "serial/linesettings.h"

#include <QSerialPort>

static QSerialPort::FlowControl flowControlOf(FlowType flow)
{
    switch (flow) {
    case FLOW_HARDWARE:
        return QSerialPort::HardwareControl;
    case FLOW_XONXOFF:
        return QSerialPort::SoftwareControl;
    case FLOW_OFF:
        break;
    }
    return QSerialPort::NoFlowControl;
}

static QSerialPort::Parity parityOf(ParityType parity)
{
    switch (parity) {
    case PAR_ODD:
        return QSerialPort::OddParity;
    case PAR_EVEN:
        return QSerialPort::EvenParity;
    case PAR_MARK:
        return QSerialPort::MarkParity;
    case PAR_SPACE:
        return QSerialPort::SpaceParity;
    case PAR_NONE:
        break;
    }
    return QSerialPort::NoParity;
}

static QSerialPort::StopBits stopBitsOf(StopBitsType bits)
{
    switch (bits) {
    case STOP_1_5:
        return QSerialPort::OneAndHalfStop;
    case STOP_2:
        return QSerialPort::TwoStop;
    case STOP_1:
        break;
    }
    return QSerialPort::OneStop;
}

void LineSettings::applyTo(QSerialPort &port) const
{
    // In the order in which the controller sets them. Flow control comes before RTS because it may take
    // control of RTS.
    if (baudRate)
        port.setBaudRate(*baudRate);
    if (flowControl)
        port.setFlowControl(flowControlOf(*flowControl));
    if (parity)
        port.setParity(parityOf(*parity));
    if (dataBits)
        port.setDataBits(static_cast<QSerialPort::DataBits>(*dataBits));
    if (stopBits)
        port.setStopBits(stopBitsOf(*stopBits));
    if (dtr)
        port.setDataTerminalReady(*dtr);
    if (rts)
        port.setRequestToSend(*rts);
}
