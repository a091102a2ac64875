/* A kernel driver with a minimal simulated Tamber. It checks requests strictly, and remembers only
   the last query. */

#include "fakedriver.h"

#include <ntddk.h>

#define INTERFACE L"\\??\\ROOT#TAMBER#0000#{65e8773e-8f56-11d0-a3b9-00a0c9223196}"
#define TRANSFER 0x222000
#define SAMPLE_RATE 0x22606C

enum { BLOCK = 16, BLOCK_TO_FETCH = 20, MESSAGE = 64, METERS = 18, METERS_A_READ = 6 };
enum { TAG_IDENTITY = 0x31, TAG_METER = 0x71, TAG_REDUCTION = 0xB1 };

static UNICODE_STRING deviceName = RTL_CONSTANT_STRING(L"\\Device\\Tamber");
static UNICODE_STRING folderName = RTL_CONSTANT_STRING(INTERFACE);
static UNICODE_STRING endpointName = RTL_CONSTANT_STRING(INTERFACE L"\\tamber");
static UNICODE_STRING testName = RTL_CONSTANT_STRING(L"\\??\\tamber");
static UNICODE_STRING logName = RTL_CONSTANT_STRING(L"\\??\\C:\\tamber-driver.log");

static HANDLE folder;
static ULONG behaviour = BEHAVE_WELL;
static ULONG requests;
static UCHAR question; /* the tag of the pending query */
static int metersGiven;
static UCHAR askedType, askedNumber;

static void logBytes(const UCHAR *bytes, ULONG count)
{
    static const char digits[] = "0123456789abcdef";
    static char line[3 * 512];
    OBJECT_ATTRIBUTES attributes;
    IO_STATUS_BLOCK status;
    HANDLE file;
    ULONG i, at = 0;
    if (count > 512) count = 512;
    for (i = 0; i < count; ++i) {
        line[at++] = digits[bytes[i] >> 4];
        line[at++] = digits[bytes[i] & 15];
        line[at++] = i + 1 < count ? ' ' : '\n';
    }
    InitializeObjectAttributes(
        &attributes, &logName, OBJ_CASE_INSENSITIVE | OBJ_KERNEL_HANDLE, NULL, NULL);
    if (ZwCreateFile(
            &file, FILE_APPEND_DATA | SYNCHRONIZE, &attributes, &status, NULL,
            FILE_ATTRIBUTE_NORMAL, FILE_SHARE_READ | FILE_SHARE_WRITE, FILE_OPEN_IF,
            FILE_SYNCHRONOUS_IO_NONALERT, NULL, 0) != STATUS_SUCCESS)
        return;
    ZwWriteFile(file, NULL, NULL, NULL, &status, line, at, NULL, NULL);
    ZwClose(file);
}

static ULONG wordAt(const UCHAR *bytes)
{
    return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | (ULONG)bytes[3] << 24;
}

static int validBlock(const UCHAR *block, UCHAR request)
{
    return block[8] == 0x17 && block[9] == 0 && block[10] == 0 && block[11] == 0 &&
           block[12] == 0 && block[13] == 0 && block[14] == 0 && block[15] == request;
}

/* A query is a single flag item. The one for the gain reduction follows a number and a type. */
static void receive(const UCHAR *message, ULONG length)
{
    if (length >= 2 && (message[0] == TAG_IDENTITY || message[0] == TAG_METER)) {
        question = message[0];
        metersGiven = 0;
    } else if (length >= 8 && message[6] == TAG_REDUCTION) {
        question = TAG_REDUCTION;
        askedNumber = message[2];
        askedType = message[5];
    }
}

static NTSTATUS transferOut(const UCHAR *input, ULONG size, ULONG outSize, ULONG_PTR *returned)
{
    if (size < BLOCK + 1 || outSize != 0 || wordAt(input + 4) != size - BLOCK ||
        !validBlock(input, 0x1D))
        return STATUS_INVALID_PARAMETER;
    logBytes(input, size);
    receive(input + BLOCK, size - BLOCK);
    *returned = behaviour == BEHAVE_CHATTY;
    return STATUS_SUCCESS;
}

static ULONG putByte(UCHAR *to, UCHAR tag, UCHAR value)
{
    to[0] = tag;
    to[1] = 2;
    to[2] = value;
    return 3;
}

static ULONG putShort(UCHAR *to, UCHAR tag, USHORT value)
{
    to[0] = tag;
    to[1] = 3;
    to[2] = value & 0xFF;
    to[3] = value >> 8;
    return 4;
}

static ULONG putChannel(UCHAR *to, UCHAR type, UCHAR number)
{
    ULONG at = putByte(to, 0x61, type);
    return at + putByte(to + at, 0x62, number);
}

static void putIdentity(UCHAR *to)
{
    static const char name[] = "Tamber";
    ULONG i, at = putShort(to, 0x32, 0x0123);
    at += putShort(to + at, 0x33, 45);
    to[at++] = 0x34;
    to[at++] = 5;
    to[at++] = sizeof(name) - 1;
    for (i = 0; i < sizeof(name) - 1; ++i)
        to[at++] = name[i];
}

static void putMeters(UCHAR *to)
{
    ULONG at = 0;
    int i;
    for (i = 0; i < METERS_A_READ; ++i, ++metersGiven) {
        const int master = metersGiven >= 16;
        const int number = master ? metersGiven - 15 : metersGiven + 1;
        at += putChannel(to + at, master ? 2 : 4, (UCHAR)number);
        at += putShort(to + at, 0x72, (USHORT)(1500 * number));
    }
    if (metersGiven == METERS) question = 0;
}

static void answer(UCHAR *to)
{
    switch (question) {
    case TAG_IDENTITY:
        putIdentity(to);
        break;
    case TAG_METER:
        putMeters(to);
        return;
    case TAG_REDUCTION:
        putShort(to + putChannel(to, askedType, askedNumber), 0xB2, 20000);
        break;
    default:
        putByte(to, 0xA1, 1);
    }
    question = 0;
}

static NTSTATUS transferIn(UCHAR *buffer, ULONG size, ULONG outSize, ULONG_PTR *returned)
{
    UCHAR message[MESSAGE];
    if (size != BLOCK_TO_FETCH || wordAt(buffer + 4) != 0 || !validBlock(buffer, 0x1E))
        return STATUS_INVALID_PARAMETER;
    if (outSize > MESSAGE) outSize = MESSAGE;
    RtlZeroMemory(message, sizeof(message));
    answer(message);
    RtlCopyMemory(buffer, message, outSize);
    *returned = behaviour == BEHAVE_SHORT ? outSize - 1 : outSize;
    return STATUS_SUCCESS;
}

static NTSTATUS behave(UCHAR *buffer, ULONG size, ULONG outSize, ULONG_PTR *returned)
{
    if (size != 4 || outSize != 4) return STATUS_INVALID_PARAMETER;
    behaviour = wordAt(buffer);
    if (behaviour == BEHAVE_UNPLUG) IoDeleteSymbolicLink(&endpointName);
    if (behaviour == BEHAVE_REPLUG) IoCreateSymbolicLink(&endpointName, &deviceName);
    *(ULONG *)buffer = requests;
    *returned = 4;
    return STATUS_SUCCESS;
}

static NTSTATUS handle(IRP *irp, const IO_STACK_LOCATION *stack, ULONG_PTR *returned)
{
    UCHAR *buffer = irp->AssociatedIrp.SystemBuffer;
    const ULONG code = stack->Parameters.DeviceIoControl.IoControlCode;
    const ULONG size = stack->Parameters.DeviceIoControl.InputBufferLength;
    const ULONG outSize = stack->Parameters.DeviceIoControl.OutputBufferLength;
    if (code == FAKE_DRIVER_BEHAVE) return behave(buffer, size, outSize, returned);
    ++requests;
    if (behaviour == BEHAVE_REFUSE) return STATUS_UNSUCCESSFUL;
    if (code == SAMPLE_RATE && size == 0 && outSize == 4) {
        *(ULONG *)buffer = FAKE_DRIVER_RATE;
        *returned = 4;
        return STATUS_SUCCESS;
    }
    if (code != TRANSFER || size < BLOCK) return STATUS_INVALID_PARAMETER;
    if (wordAt(buffer) > 1) return STATUS_INVALID_PARAMETER;
    return wordAt(buffer) == 0 ? transferOut(buffer, size, outSize, returned)
                               : transferIn(buffer, size, outSize, returned);
}

static NTSTATUS NTAPI control(DEVICE_OBJECT *device, IRP *irp)
{
    ULONG_PTR returned = 0;
    NTSTATUS status;
    UNREFERENCED_PARAMETER(device);
    status = handle(irp, IoGetCurrentIrpStackLocation(irp), &returned);
    irp->IoStatus.Status = status;
    irp->IoStatus.Information = returned;
    IofCompleteRequest(irp, IO_NO_INCREMENT);
    return status;
}

static NTSTATUS NTAPI openOrClose(DEVICE_OBJECT *device, IRP *irp)
{
    UNREFERENCED_PARAMETER(device);
    irp->IoStatus.Status = STATUS_SUCCESS;
    irp->IoStatus.Information = 0;
    IofCompleteRequest(irp, IO_NO_INCREMENT);
    return STATUS_SUCCESS;
}

NTSTATUS NTAPI DriverEntry(DRIVER_OBJECT *driver, UNICODE_STRING *registryPath)
{
    DEVICE_OBJECT *device;
    OBJECT_ATTRIBUTES attributes;
    NTSTATUS status;
    UNREFERENCED_PARAMETER(registryPath);
    driver->MajorFunction[IRP_MJ_CREATE] = openOrClose;
    driver->MajorFunction[IRP_MJ_CLOSE] = openOrClose;
    driver->MajorFunction[IRP_MJ_DEVICE_CONTROL] = control;
    status = IoCreateDevice(driver, 0, &deviceName, FILE_DEVICE_UNKNOWN, 0, FALSE, &device);
    if (status != STATUS_SUCCESS) return status;
    InitializeObjectAttributes(
        &attributes, &folderName, OBJ_CASE_INSENSITIVE | OBJ_KERNEL_HANDLE, NULL, NULL);
    status = ZwCreateDirectoryObject(&folder, DIRECTORY_ALL_ACCESS, &attributes);
    if (status != STATUS_SUCCESS) return status;
    status = IoCreateSymbolicLink(&endpointName, &deviceName);
    return status != STATUS_SUCCESS ? status : IoCreateSymbolicLink(&testName, &deviceName);
}
