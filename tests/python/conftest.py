import pytest

import vdrzax


@pytest.fixture(scope="session")
def vdr():
    return vdrzax.Client()


@pytest.fixture(scope="session")
def the_device():
    import device

    return device.Device()


@pytest.fixture
def device(the_device):
    the_device.reset()
    yield the_device
    the_device.reset()
