#include "platform/system/linux/mount_table.h"

#include <gtest/gtest.h>

namespace tolvek::test {

using Folders = std::vector<std::string>;

namespace {

const std::string kRoot = "27 1 254:0 / / rw,relatime - ext4 /dev/sda2 rw\n";

// A line of the table in the system's format.
std::string line(const std::string& device, const std::string& root, const std::string& folder,
                 const std::string& type, const std::string& source)
{
    return "50 27 " + device + " " + root + " " + folder + " rw,nosuid shared:7 master:1 - " +
           type + " " + source + " rw\n";
}

}

TEST(MountTableTest, TheRootItselfIsNotAmongThem)
{
    EXPECT_EQ(mountedVolumes(kRoot), Folders{});
    EXPECT_EQ(mountedVolumes("27 1 0:30 / / rw - overlay overlay rw\n"), Folders{});
    EXPECT_EQ(mountedVolumes(""), Folders{});
}

TEST(MountTableTest, DisksSticksAndFoldersOverTheNetAreVolumes)
{
    const struct {
        std::string folder, type, source;
    } cases[] = {
        {"/home", "ext4", "/dev/mapper/vg-home"},        {"/media/taro/USB", "vfat", "/dev/sdb1"},
        {"/run/media/taro/WIN", "fuseblk", "/dev/sda1"}, {"/mnt/mail", "nfs4", "nas:/mail"},
        {"/mnt/share", "cifs", "//nas/share"},           {"/mnt/c", "9p", "C:\\134"},
        {"/home/taro/far", "fuse.sshfs", "taro@far:"},   {"/tank", "zfs", "tank"}};
    for (const auto& c : cases)
        EXPECT_EQ(mountedVolumes(kRoot + line("8:1", "/", c.folder, c.type, c.source)),
                  Folders{c.folder});
}

TEST(MountTableTest, WhatTheSystemMountsForItselfIsNone)
{
    const struct {
        std::string folder, type, source;
    } cases[] = {{"/proc", "proc", "proc"},
                 {"/sys/fs/cgroup", "cgroup2", "cgroup2"},
                 {"/dev/shm", "tmpfs", "tmpfs"},
                 {"/tmp", "tmpfs", "tmpfs"},
                 {"/run/user/1000/gvfs", "fuse.gvfsd-fuse", "gvfsd-fuse"},
                 {"/boot/efi", "vfat", "/dev/sda1"},
                 {"/snap/core/1", "squashfs", "/dev/loop0"},
                 {"/mnt/packed", "squashfs", "/dev/loop1"},
                 {"/var/lib/docker", "overlay", "overlay"},
                 {"/mnt/merged", "overlay", "overlay"}};
    for (const auto& c : cases)
        EXPECT_EQ(mountedVolumes(kRoot + line("8:1", "/", c.folder, c.type, c.source)), Folders{})
            << c.folder;
}

TEST(MountTableTest, AFolderWhoseNameOnlyBeginsLikeASystemOneIsAVolume)
{
    EXPECT_EQ(mountedVolumes(line("8:1", "/", "/bootleg", "ext4", "/dev/sdc1")),
              Folders{"/bootleg"});
}

TEST(MountTableTest, AVolumeMountedTwiceCountsAtItsFirstPlace)
{
    const std::string table = line("8:1", "/", "/mnt/b", "ext4", "/dev/sdb1") +
                              line("8:1", "/", "/mnt/a", "ext4", "/dev/sdb1") +
                              line("254:0", "/", "/mnt/root", "ext4", "/dev/sda2");
    EXPECT_EQ(mountedVolumes(kRoot + table), Folders{"/mnt/b"});
}

TEST(MountTableTest, SingleFilesAndFoldersInASecondPlaceAreNone)
{
    const std::string table = line("8:1", "/etc/hosts", "/home/taro/hosts", "ext4", "/dev/sdb1") +
                              line("8:2", "/mail", "/home/taro/mail", "ext4", "/dev/sdb2");
    EXPECT_EQ(mountedVolumes(kRoot + table), Folders{});
}

TEST(MountTableTest, AVolumeDividedByNatureCountsByItsPart)
{
    const std::string root = "27 1 0:25 /@ / rw - btrfs /dev/sda2 rw\n";
    EXPECT_EQ(mountedVolumes(root + line("0:25", "/@home", "/home", "btrfs", "/dev/sda2")),
              Folders{})
        << "the root's own volume";
    EXPECT_EQ(mountedVolumes(root + line("0:40", "/data", "/mnt/data", "btrfs", "/dev/sdb1")),
              Folders{"/mnt/data"});
}

TEST(MountTableTest, EscapedNamesComeAsTheyAre)
{
    const std::string table = line("8:1", "/", "/media/My\\040Disk", "vfat", "/dev/sdb1") +
                              line("8:2", "/", "/media/a\\011b\\134c", "vfat", "/dev/sdb2") +
                              line("8:3", "/", "/media/ポスト", "vfat", "/dev/sdb3") +
                              line("8:4", "/", "/media/end\\04", "vfat", "/dev/sdb4");
    EXPECT_EQ(mountedVolumes(table),
              (Folders{"/media/My Disk", "/media/a\tb\\c", "/media/end\\04", "/media/ポスト"}));
}

TEST(MountTableTest, ALineThatIsCutOffIsPassedOver)
{
    EXPECT_EQ(mountedVolumes("50 27 8:1 / /mnt/a rw\n50 27\n\n50 27 8:2 / /mnt/b rw - ext4\n" +
                             line("8:3", "/", "/mnt/c", "ext4", "/dev/sdd1")),
              Folders{"/mnt/c"});
}

}
