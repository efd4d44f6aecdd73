import tempfile

import hypothesis
import hypothesis.configuration
import pytest

import vdrzax

# Nothing is kept between runs, and how long an example takes is no criterion.
hypothesis.settings.register_profile("tests", database=None, deadline=None)
hypothesis.settings.load_profile("tests")


def pytest_configure(config):
    home = tempfile.TemporaryDirectory()
    config.add_cleanup(home.cleanup)
    hypothesis.configuration.set_hypothesis_home_dir(home.name)


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
